#pragma once

#include "Console.h"
#include "TransferReport.h"

#include <QJsonObject>

namespace oVELDRA::data {

/// Says a transfer's report: counts, sums, what was not copied, rejected rows, and whether the proof holds.
void say(const TransferReport& report, Console& console);

/// The whole report for programs. Sums are numbers; `source` is everything read, rejected rows included.
[[nodiscard]] QJsonObject jsonOf(const TransferReport& report);

} // namespace oVELDRA::data
