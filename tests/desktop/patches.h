// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QRect>
#include <vector>

namespace desktop_tests {

/// The smallest rectangles, from top to bottom, that hold all pixels of one colour; rows of the picture
/// without any part them.
inline std::vector<QRect> patches(const QImage& picture, QRgb colour) {
    std::vector<QRect> found;
    for (int y = 0; y < picture.height(); ++y) {
        QRect inked;
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) == colour) inked |= QRect(x, y, 1, 1);
        }
        if (inked.isEmpty()) continue;
        if (found.empty() || found.back().bottom() != y - 1) found.emplace_back();
        found.back() |= inked;
    }
    return found;
}

/// The smallest rectangle that holds all pixels of one colour.
inline QRect extent(const QImage& picture, QRgb colour) {
    QRect all;
    for (const QRect& patch : patches(picture, colour))
        all |= patch;
    return all;
}

}  // namespace desktop_tests
