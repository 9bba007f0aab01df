#pragma once

#include <QIcon>
#include <QImage>

namespace tornel {

/// The program's icon, a crate that arrows go into and out of, as a square of `size` pixels. Needs no application
/// object.
[[nodiscard]] QImage hostPicture(int size);

/// The same at every size it is shown in.
[[nodiscard]] QIcon hostIcon();

} // namespace tornel
