// SPDX-License-Identifier: MIT
#include "hosts/linux/app_list/icon_loader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "hosts/linux/app_list/icon_names.h"
#include "hosts/linux/app_list/picture_scaling.h"
#include "hosts/linux/app_list/png_file.h"
#include "hosts/linux/app_list/png_picture.h"
#include "hosts/linux/app_list/rationed_files.h"

namespace hosts {
namespace {

constexpr std::size_t longestFile = std::size_t{16} << 20;
// All files of an application's icon, and decoding one of them again.
constexpr FileRation ration = {.calls = 256, .names = 0, .bytes = 2 * longestFile};
// A small file can hold a picture that takes long to decode.
constexpr int mostDecodings = 3;

std::uint32_t wantedSide(const IconTarget& target) {
    const double side = std::round(target.points * target.scale);
    return side >= 1 && side <= longestPngSide ? static_cast<std::uint32_t>(side) : 0;
}

/// A file that begins as a picture does, and the length in pixels of its longer side.
struct IconFile {
    std::string path;
    std::uint32_t side;
};

class IconLoader {
public:
    IconLoader(const platform::FileSystem& files, const InstalledApplication& application, const IconTarget& target)
        : _files(files, ration), _application(application), _target(target), _wanted(wantedSide(target)) {}

    std::optional<Picture> load() {
        if (_wanted == 0) return std::nullopt;
        if (auto picture = loadExactFit()) return picture;
        return loadBestFit();
    }

private:
    // The first picture of the very size that is wanted. Remembers those of other sizes.
    std::optional<Picture> loadExactFit() {
        for (const std::string& name : _application.iconNames) {
            for (const std::string& file : iconFileNames(name, _target.scale, _target.device)) {
                if (auto picture = loadIfExactFit(_application.folder + "/" + file)) return picture;
            }
        }
        return std::nullopt;
    }

    std::optional<Picture> loadIfExactFit(std::string path) {
        if (!_files.readFile(path, _bytes, longestFile)) return std::nullopt;
        const auto header = readPngHeader(_bytes);
        if (!header) return std::nullopt;
        const std::uint32_t side = std::max(header->width, header->height);
        if (side == _wanted) return decode();
        _others.push_back({std::move(path), side});
        return std::nullopt;
    }

    std::optional<Picture> loadBestFit() {
        std::ranges::stable_sort(_others, {}, [this](const IconFile& file) { return rank(file); });
        for (const IconFile& file : _others) {
            if (!_files.readFile(file.path, _bytes, longestFile)) continue;
            if (auto picture = decode()) return picture;
        }
        return std::nullopt;
    }

    // Larger ones first, since they only need to be made smaller; of either kind, the one whose size
    // is nearest.
    std::tuple<bool, std::uint32_t> rank(const IconFile& file) const {
        const bool isTooSmall = file.side < _wanted;
        return {isTooSmall, isTooSmall ? _wanted - file.side : file.side};
    }

    std::optional<Picture> decode() {
        if (_decodings == mostDecodings) return std::nullopt;
        ++_decodings;
        auto picture = decodePng(_bytes);
        if (picture) picture = fitIntoSquare(std::move(*picture), _wanted);
        return picture;
    }

    RationedFiles _files;
    const InstalledApplication& _application;
    const IconTarget& _target;
    const std::uint32_t _wanted;
    int _decodings = 0;
    std::string _bytes;
    std::vector<IconFile> _others;
};

}  // namespace

std::shared_ptr<const platform::UIImage> loadIcon(const platform::FileSystem& files,
                                                  const InstalledApplication& application, const IconTarget& target) {
    auto picture = IconLoader(files, application, target).load();
    if (!picture) return nullptr;
    const double scale = static_cast<double>(picture->width) / target.points;
    return platform::UIImage::fromPixels(application.identifier, picture->width, picture->height,
                                         std::move(picture->rgba), scale);
}

}  // namespace hosts
