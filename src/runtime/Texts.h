#pragma once

#include <QString>
#include <QStringView>

namespace oVELDRA::runtime {

/// Without the blanks (U+0020 only, no tabs) at both ends.
[[nodiscard]] QString Trim(QStringView text);

} // namespace oVELDRA::runtime
