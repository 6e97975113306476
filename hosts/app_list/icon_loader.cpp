// SPDX-License-Identifier: MIT
#include "hosts/app_list/icon_loader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "hosts/app_list/icon_names.h"
#include "hosts/app_list/picture_scaling.h"
#include "hosts/app_list/png_file.h"
#include "hosts/app_list/png_picture.h"

namespace hosts {
namespace {

constexpr std::size_t longestFile = std::size_t{16} << 20;
// All files of an application's icon, and decoding one of them again.
constexpr FileRation ownRation = {.calls = 256, .names = 0, .bytes = 2 * longestFile};
// A small file can hold a picture that takes long to decode.
constexpr int mostDecodings = 3;

FileRation rationFor(const FileRation& all) {
    return {.calls = std::min(ownRation.calls, all.calls), .names = 0, .bytes = std::min(ownRation.bytes, all.bytes)};
}

std::uint32_t wantedSide(const IconTarget& target) {
    const double side = std::round(target.points * target.scale);
    return side >= 1 && side <= longestPngSide ? static_cast<std::uint32_t>(side) : 0;
}

/// A file that begins as a picture does.
struct IconFile {
    std::string path;
    PngHeader header;
};

class IconLoader {
public:
    IconLoader(const IconSource& source, const InstalledApplication& application, const IconTarget& target)
        : _source(source),
          _granted(rationFor(source.ration.files)),
          _files(source.files, _granted),
          _application(application),
          _target(target),
          _wanted(wantedSide(target)) {}
    IconLoader(const IconLoader&) = delete;
    IconLoader& operator=(const IconLoader&) = delete;
    ~IconLoader() {
        _source.ration.files.calls -= _granted.calls - _files.left().calls;
        _source.ration.files.bytes -= _granted.bytes - _files.left().bytes;
    }

    std::optional<Picture> load() {
        if (_wanted == 0) return std::nullopt;
        if (auto picture = loadExactFit()) return picture;
        auto picture = loadBestFit();
        if (!picture && !_files.firstRefused().empty()) skip(_files.firstRefused(), "no more is read for icons");
        return picture;
    }

private:
    // The first picture of the very size that is wanted. Remembers those of other sizes.
    std::optional<Picture> loadExactFit() {
        for (const std::string& name : readIconNames(_files, _application.folder, _target.device)) {
            for (const std::string& file : iconFileNames(name, _target.scale, _target.device)) {
                if (auto picture = loadIfExactFit(_application.folder + "/" + file)) return picture;
            }
        }
        return std::nullopt;
    }

    std::optional<Picture> loadIfExactFit(std::string path) {
        if (!_files.readFile(path, _bytes, longestFile)) return std::nullopt;
        const auto header = readPngHeader(_bytes);
        if (!header) {
            skip(path, "it is no picture of a size that is shown");
            return std::nullopt;
        }
        if (std::max(header->width, header->height) == _wanted) return decode(path, *header);
        _others.push_back({std::move(path), *header});
        return std::nullopt;
    }

    std::optional<Picture> loadBestFit() {
        std::ranges::stable_sort(_others, {}, [this](const IconFile& file) { return rank(file); });
        for (const IconFile& file : _others) {
            if (!_files.readFile(file.path, _bytes, longestFile)) continue;
            if (auto picture = decode(file.path, file.header)) return picture;
        }
        return std::nullopt;
    }

    // Larger ones first, since they only need to be made smaller; of either kind, the one whose size
    // is nearest.
    std::tuple<bool, std::uint32_t> rank(const IconFile& file) const {
        const std::uint32_t side = std::max(file.header.width, file.header.height);
        const bool isTooSmall = side < _wanted;
        return {isTooSmall, isTooSmall ? _wanted - side : side};
    }

    std::optional<Picture> decode(const std::string& path, const PngHeader& header) {
        if (!takeDecoding(header)) {
            skip(path, "no more is decoded for icons");
            return std::nullopt;
        }
        auto picture = decodePng(_bytes);
        if (!picture) {
            skip(path, "it is a damaged picture");
            return std::nullopt;
        }
        return fitIntoSquare(*std::move(picture), _wanted);
    }

    bool takeDecoding(const PngHeader& header) {
        const std::uint64_t pixels = std::uint64_t{header.width} * header.height;
        if (_decodings == mostDecodings || pixels > _source.ration.pixels) return false;
        ++_decodings;
        _source.ration.pixels -= pixels;
        return true;
    }

    void skip(std::string_view path, std::string_view reason) const {
        platform::tellPassedOver(_source.skips, path, reason);
    }

    const IconSource& _source;
    const FileRation _granted;
    RationedFiles _files;
    const InstalledApplication& _application;
    const IconTarget& _target;
    const std::uint32_t _wanted;
    int _decodings = 0;
    std::string _bytes;
    std::vector<IconFile> _others;
};

}  // namespace

std::shared_ptr<const platform::UIImage> loadIcon(const IconSource& source, const InstalledApplication& application,
                                                  const IconTarget& target) {
    auto picture = IconLoader(source, application, target).load();
    if (!picture) return nullptr;
    const double scale = static_cast<double>(picture->width) / target.points;
    return platform::UIImage::fromPixels(application.identifier, picture->width, picture->height,
                                         std::move(picture->rgba), scale);
}

}  // namespace hosts
