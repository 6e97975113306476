// SPDX-License-Identifier: MIT
#include "hosts/app_list/application_icon.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <tuple>
#include <utility>

#include "hosts/app_list/png_picture.h"

namespace hosts {
namespace {

constexpr std::size_t longestFile = std::size_t{16} << 20;
// All files of an application's icon, and decoding one of them again.
constexpr FileRation ownRation = {.calls = 256, .names = 0, .bytes = 2 * longestFile};
// A small file can hold a picture that takes long to decode.
constexpr int mostDecodings = 3;

constexpr std::size_t mostIconNames = 16;
constexpr std::string_view extension = ".png";
constexpr std::array<std::string_view, 3> scaleEndings = {"", "@2x", "@3x"};
constexpr std::string_view phoneEnding = "~iphone";
constexpr std::string_view padEnding = "~ipad";
// What the file system takes, less the endings that a name is tried with.
constexpr std::size_t longestIconName = 255 - std::string_view("@3x~iphone.png").size();

// The endings for a kind of device that a device tries, its own first and the other kind's last; the
// empty one stands for what is meant for all.
std::array<std::string_view, 3> deviceEndings(const platform::UIDevice& device) {
    const bool isPad = device.userInterfaceIdiom == platform::UIDevice::idiomPad;
    return {isPad ? padEnding : phoneEnding, "", isPad ? phoneEnding : padEnding};
}

bool isPlainFileName(std::string_view name) {
    return name.find('/') == name.npos && name.find("..") == name.npos && name.find('\0') == name.npos;
}

std::string_view commonPart(std::string_view name) {
    for (const std::string_view ending : {extension, phoneEnding, padEnding, scaleEndings[1], scaleEndings[2]}) {
        if (name.ends_with(ending)) name.remove_suffix(ending.size());
    }
    return name;
}

class IconNameCollector {
public:
    void addFrom(const platform::Value& fileOrFiles) {
        if (const std::string* name = fileOrFiles.string()) add(*name);
        if (const platform::Array* names = fileOrFiles.array()) {
            for (const platform::Value& name : *names) {
                if (name.string()) add(*name.string());
            }
        }
    }

    void addFromPrimaryIcon(const platform::Value& icons) {
        if (!icons.dictionary()) return;
        const platform::Value* primary = icons.dictionary()->find("CFBundlePrimaryIcon");
        if (!primary || !primary->dictionary()) return;
        const platform::Value* files = primary->dictionary()->find("CFBundleIconFiles");
        if (files) addFrom(*files);
    }

    std::vector<std::string> take() { return std::move(_names); }

private:
    void add(std::string_view name) {
        if (_names.size() == mostIconNames || !isPlainFileName(name)) return;
        name = commonPart(name);
        if (name.empty() || name.size() > longestIconName) return;
        if (std::ranges::find(_names, name) == _names.end()) _names.emplace_back(name);
    }

    std::vector<std::string> _names;
};

// The wanted scale, then the finer ones, which lose nothing, then the coarser ones.
std::array<std::size_t, 3> scaleOrder(double scale) {
    if (std::isnan(scale) || scale <= 1) return {0, 1, 2};
    if (scale <= 2) return {1, 2, 0};
    return {2, 1, 0};
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
    IconLoader(RationedFiles& files, const IconSource& source, const InstalledApplication& application,
               const IconTarget& target)
        : _files(files), _source(source), _application(application), _target(target), _wanted(wantedSide(target)) {}

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

    RationedFiles& _files;
    const IconSource& _source;
    const InstalledApplication& _application;
    const IconTarget& _target;
    const std::uint32_t _wanted;
    int _decodings = 0;
    std::string _bytes;
    std::vector<IconFile> _others;
};

}  // namespace

std::vector<std::string> readIconNames(RationedFiles& files, const std::string& folder,
                                       const platform::UIDevice& device) {
    constexpr std::string_view kinds[] = {"CFBundleIcons", "CFBundleIconFiles", "CFBundleIconFile"};
    std::vector<std::string> keys;
    for (const std::string_view kind : kinds) {
        for (const std::string_view ending : deviceEndings(device))
            keys.push_back(std::string(kind).append(ending));
    }
    const auto info = readInfo(files, folder, std::vector<std::string_view>(keys.begin(), keys.end()));
    if (!info) return {};
    IconNameCollector names;
    for (const std::string& key : keys) {
        const platform::Value* value = info->find(key);
        if (!value) continue;
        if (key.starts_with(kinds[0])) {
            names.addFromPrimaryIcon(*value);
        } else {
            names.addFrom(*value);
        }
    }
    return names.take();
}

std::vector<std::string> iconFileNames(std::string_view iconName, double scale, const platform::UIDevice& device) {
    std::vector<std::string> files;
    for (const std::size_t step : scaleOrder(scale)) {
        for (const std::string_view ending : deviceEndings(device)) {
            files.push_back(std::string(iconName).append(scaleEndings[step]).append(ending).append(extension));
        }
    }
    return files;
}

std::shared_ptr<const platform::UIImage> loadIcon(const IconSource& source, const InstalledApplication& application,
                                                  const IconTarget& target) {
    FileRation& left = source.ration.files;
    const FileRation granted = {
        .calls = std::min(ownRation.calls, left.calls), .names = 0, .bytes = std::min(ownRation.bytes, left.bytes)};
    RationedFiles files(source.files, granted);
    auto picture = IconLoader(files, source, application, target).load();
    left.calls -= granted.calls - files.left().calls;
    left.bytes -= granted.bytes - files.left().bytes;
    if (!picture) return nullptr;
    const double scale = static_cast<double>(picture->width) / target.points;
    return platform::UIImage::fromPixels(application.identifier, picture->width, picture->height,
                                         std::move(picture->rgba), scale);
}

}  // namespace hosts
