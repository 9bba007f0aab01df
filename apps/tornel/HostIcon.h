#pragma once

#include <QIcon>

namespace tornel {

/// The program's icon, drawn at every size it is shown in: a crate that arrows go into and out of.
[[nodiscard]] QIcon hostIcon();

} // namespace tornel
