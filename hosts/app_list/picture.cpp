// SPDX-License-Identifier: MIT
#include "hosts/app_list/picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace hosts {
namespace {

constexpr std::size_t bytesPerPixel = Picture::bytesPerPixel;

/// The old pixels that a new one covers along one side, and how much of each.
struct Cover {
    std::size_t first;
    std::vector<double> shares;
};

std::vector<Cover> covers(std::uint32_t oldLength, std::uint32_t newLength) {
    std::vector<Cover> all(newLength);
    const double step = static_cast<double>(oldLength) / newLength;
    for (std::uint32_t position = 0; position < newLength; ++position) {
        const double start = position * step;
        const double end = std::min<double>(oldLength, start + step);
        Cover& cover = all[position];
        cover.first = static_cast<std::size_t>(start);
        for (double pixel = std::floor(start); pixel < end; ++pixel) {
            cover.shares.push_back(std::min(pixel + 1, end) - std::max(pixel, start));
        }
    }
    return all;
}

std::uint8_t rounded(double component) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(component, 0.0, 255.0)));
}

/// Sums up pixels by their weight; a clear pixel's colour does not count.
class Mean {
public:
    void add(const std::uint8_t* pixel, double weight) {
        const double opacity = weight * pixel[3];
        for (std::size_t channel = 0; channel < _colour.size(); ++channel) {
            _colour[channel] += opacity * pixel[channel];
        }
        _opacity += opacity;
        _weight += weight;
    }

    void store(std::uint8_t* pixel) const {
        pixel[3] = rounded(_opacity / _weight);
        for (std::size_t channel = 0; channel < _colour.size(); ++channel) {
            pixel[channel] = pixel[3] == 0 ? std::uint8_t{0} : rounded(_colour[channel] / _opacity);
        }
    }

private:
    std::array<double, 3> _colour{};
    double _opacity = 0;
    double _weight = 0;
};

Mean meanOf(const Picture& picture, const Cover& columns, const Cover& rows) {
    Mean mean;
    for (std::size_t row = 0; row < rows.shares.size(); ++row) {
        const std::size_t start = (rows.first + row) * picture.width + columns.first;
        for (std::size_t column = 0; column < columns.shares.size(); ++column) {
            mean.add(&picture.rgba[(start + column) * bytesPerPixel], rows.shares[row] * columns.shares[column]);
        }
    }
    return mean;
}

Picture shrink(const Picture& picture, std::uint32_t width, std::uint32_t height) {
    Picture small{width, height, std::vector<std::uint8_t>(bytesPerPixel * width * height)};
    const std::vector<Cover> columns = covers(picture.width, width);
    std::size_t target = 0;
    for (const Cover& row : covers(picture.height, height)) {
        for (const Cover& column : columns) {
            meanOf(picture, column, row).store(&small.rgba[target]);
            target += bytesPerPixel;
        }
    }
    return small;
}

Picture onSquare(Picture picture) {
    if (picture.width == picture.height) return picture;
    const std::uint32_t side = std::max(picture.width, picture.height);
    Picture square{side, side, std::vector<std::uint8_t>(bytesPerPixel * side * side)};
    const std::size_t left = (side - picture.width) / 2;
    const std::size_t top = (side - picture.height) / 2;
    const std::size_t rowBytes = bytesPerPixel * picture.width;
    for (std::size_t row = 0; row < picture.height; ++row) {
        std::copy_n(&picture.rgba[row * rowBytes], rowBytes, &square.rgba[((top + row) * side + left) * bytesPerPixel]);
    }
    return square;
}

std::uint32_t scaledLength(std::uint32_t length, std::uint32_t longest, std::uint32_t side) {
    const double scaled = static_cast<double>(length) * side / longest;
    return std::max(1U, static_cast<std::uint32_t>(std::lround(scaled)));
}

}  // namespace

Picture fitIntoSquare(Picture picture, std::uint32_t side) {
    const std::uint32_t longest = std::max(picture.width, picture.height);
    if (longest <= side) return onSquare(std::move(picture));
    return onSquare(
        shrink(picture, scaledLength(picture.width, longest, side), scaledLength(picture.height, longest, side)));
}

}  // namespace hosts
