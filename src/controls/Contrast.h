#pragma once

#include <QColor>

namespace oVELDRA::controls {

/// What a text and what lies behind it must differ by to be read without effort.
inline constexpr double ReadableContrast = 4.5;

/// How much two opaque colours differ in lightness, from 1 (equal) to 21 (black and white): the ratio of their relative
/// luminances, each with 0.05 for stray light.
[[nodiscard]] double contrastRatio(const QColor& one, const QColor& other);

/// The colour itself, or the nearest darker (on a light ground) or lighter one (on a dark ground) that has that
/// contrast with it.
[[nodiscard]] QColor readableOn(const QColor& color, const QColor& ground, double contrast = ReadableContrast);

} // namespace oVELDRA::controls
