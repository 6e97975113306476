// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/contrast.h"

#include <algorithm>
#include <cmath>

namespace hosts::desktop {
namespace {

// Where black and white differ from a ground by the same.
constexpr double middleLuminance = 0.179;

double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    const QColor rgb = colour.toRgb();
    return 0.2126 * linear(rgb.redF()) + 0.7152 * linear(rgb.greenF()) + 0.0722 * linear(rgb.blueF());
}

QColor shining(const QColor& colour, const QColor& ground) {
    const float part = colour.alphaF();
    const auto mixed = [part](float above, float below) { return above * part + below * (1 - part); };
    return QColor::fromRgbF(mixed(colour.redF(), ground.redF()), mixed(colour.greenF(), ground.greenF()),
                            mixed(colour.blueF(), ground.blueF()));
}

bool differs(const QColor& colour, const QList<QColor>& grounds, double least) {
    return std::ranges::all_of(grounds, [&](const QColor& ground) { return contrastBetween(colour, ground) >= least; });
}

}  // namespace

double contrastBetween(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor withContrast(const QColor& colour, const QList<QColor>& grounds, double least) {
    if (grounds.isEmpty()) return colour;
    const QColor opaque = shining(colour, grounds.constFirst());
    // Steps that eight bits can tell apart: what is drawn is what was compared.
    constexpr int lightest = 255;
    const int step = luminance(grounds.constFirst()) > middleLuminance ? -1 : 1;
    QColor found = QColor::fromRgb(opaque.rgb());
    for (int lightness = found.lightness(); !differs(found, grounds, least); lightness += step) {
        if (lightness < 0 || lightness > lightest) return step > 0 ? QColor(Qt::white) : QColor(Qt::black);
        found = QColor::fromHsl(std::max(opaque.hslHue(), 0), opaque.hslSaturation(), lightness).toRgb();
    }
    return found;
}

}  // namespace hosts::desktop
