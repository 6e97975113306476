// SPDX-License-Identifier: MIT
#include "hosts/app_list/icon_names.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "hosts/app_list/device_idiom.h"

namespace hosts {
namespace {

constexpr std::string_view extension = ".png";
constexpr std::array<std::string_view, 3> scaleEndings = {"", "@2x", "@3x"};
// What the file system takes, less the endings that a name is tried with.
constexpr std::size_t longestIconName = 255 - std::string_view("@3x~iphone.png").size();

bool isPlainFileName(std::string_view name) {
    return name.find('/') == name.npos && name.find("..") == name.npos && name.find('\0') == name.npos;
}

std::string_view withoutEnding(std::string_view name, std::string_view ending) {
    return name.ends_with(ending) ? name.substr(0, name.size() - ending.size()) : name;
}

std::string_view commonPart(std::string_view name) {
    name = withoutEnding(name, extension);
    name = withoutEnding(withoutEnding(name, idiom::phone), idiom::pad);
    return withoutEnding(withoutEnding(name, scaleEndings[1]), scaleEndings[2]);
}

std::string_view formWithEnding(const IconKeyForms& forms, std::string_view ending) {
    return forms[ending == idiom::phone ? 0 : ending.empty() ? 1 : 2];
}

class IconNameCollector {
public:
    explicit IconNameCollector(const platform::UIDevice& device) : _endings(idiom::endingsFor(device)) {}

    template <class Visit>
    void forEachForm(const platform::Dictionary& info, const IconKeyForms& forms, Visit visit) const {
        for (const std::string_view ending : _endings) {
            const platform::Value* value = info.find(formWithEnding(forms, ending));
            if (value) visit(*value);
        }
    }

    void addFrom(const platform::Value& fileOrFiles) {
        if (const std::string* name = fileOrFiles.string()) add(*name);
        if (const platform::Array* names = fileOrFiles.array()) {
            for (const platform::Value& name : *names) {
                if (_names.size() == mostIconNames) return;
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

    std::array<std::string_view, 3> _endings;
    std::vector<std::string> _names;
};

// The wanted scale, then the finer ones, which lose nothing, then the coarser ones.
std::array<std::size_t, 3> scaleOrder(double scale) {
    if (std::isnan(scale) || scale <= 1) return {0, 1, 2};
    if (scale <= 2) return {1, 2, 0};
    return {2, 1, 0};
}

}  // namespace

std::vector<std::string> iconNames(const platform::Dictionary& info, const platform::UIDevice& device) {
    IconNameCollector names(device);
    names.forEachForm(info, iconKeys[0], [&](const auto& icons) { names.addFromPrimaryIcon(icons); });
    for (const IconKeyForms& forms : {iconKeys[1], iconKeys[2]}) {
        names.forEachForm(info, forms, [&](const auto& files) { names.addFrom(files); });
    }
    return names.take();
}

std::vector<std::string> iconFileNames(std::string_view iconName, double scale, const platform::UIDevice& device) {
    std::vector<std::string> files;
    for (const std::size_t step : scaleOrder(scale)) {
        for (const std::string_view ending : idiom::endingsFor(device)) {
            files.push_back(std::string(iconName).append(scaleEndings[step]).append(ending).append(extension));
        }
    }
    return files;
}

}  // namespace hosts
