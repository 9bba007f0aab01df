#include "Contrast.h"

#include <algorithm>
#include <cmath>

namespace oVELDRA::controls {

namespace {

/// Light that a channel of an sRGB colour gives, from 0 to 1.
double linear(float channel)
{
    const auto value = static_cast<double>(channel);
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor mixed(const QColor& color, const QColor& end, int part, int parts)
{
    const auto channel = [part, parts](int from, int to) { return from + (to - from) * part / parts; };
    return {channel(color.red(), end.red()), channel(color.green(), end.green()), channel(color.blue(), end.blue())};
}

} // namespace

double contrastRatio(const QColor& one, const QColor& other)
{
    constexpr double strayLight = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)}); // a list: copies, no references
    return (lighter + strayLight) / (darker + strayLight);
}

QColor readableOn(const QColor& color, const QColor& ground, double contrast)
{
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    const QColor& end = contrastRatio(black, ground) > contrastRatio(white, ground) ? black : white;
    constexpr int steps = 64;
    for (int step = 0; step < steps; ++step) {
        const QColor shade = mixed(color, end, step, steps);
        if (contrastRatio(shade, ground) >= contrast) {
            return shade;
        }
    }
    return end;
}

} // namespace oVELDRA::controls
