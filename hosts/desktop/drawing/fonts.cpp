// SPDX-License-Identifier: MIT
#include "hosts/desktop/drawing/fonts.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace hosts::desktop {
namespace {

struct Face {
    std::string_view suffix;
    QFont::Weight weight;
};

constexpr std::array<Face, 8> faces = {{
    {"-UltraLight", QFont::Thin},
    {"-Thin", QFont::ExtraLight},
    {"-Light", QFont::Light},
    {"-Medium", QFont::Medium},
    {"-SemiBold", QFont::DemiBold},
    {"-DemiBold", QFont::DemiBold},
    {"-Bold", QFont::Bold},
    {"-Heavy", QFont::ExtraBold},
}};

// From this size on, the cut with finer detail and tighter spacing is the one that looks right.
constexpr double displaySize = 28;

const QStringList& families(double pointSize) {
    static const QStringList fallbacks = {"Inter", "Noto Sans", "Liberation Sans", "DejaVu Sans", "sans-serif"};
    static const QStringList display = QStringList{"Inter Display"} + fallbacks;
    return pointSize >= displaySize ? display : fallbacks;
}

QFont::Weight weightOf(std::string_view name) {
    if (name == platform::UIFont::boldSystemName) return QFont::Bold;
    auto face = std::ranges::find_if(faces, [name](const Face& each) { return name.ends_with(each.suffix); });
    return face == faces.end() ? QFont::Normal : face->weight;
}

}  // namespace

QFont systemFont(double pointSize) {
    QFont font(families(pointSize));
    font.setPixelSize(static_cast<int>(std::lround(pointSize)));
    font.setLetterSpacing(QFont::PercentageSpacing, 98);
    return font;
}

QFont fontOf(const platform::UIFont& font) {
    QFont result = systemFont(font.pointSize);
    result.setWeight(weightOf(font.name));
    return result;
}

}  // namespace hosts::desktop
