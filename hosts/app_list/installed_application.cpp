// SPDX-License-Identifier: MIT
#include "hosts/app_list/installed_application.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "hosts/app_list/icon_names.h"
#include "hosts/app_list/one_line_name.h"
#include "hosts/app_list/strings_file.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/utf8.h"

namespace hosts {
namespace {

// Far above any that an application comes with.
constexpr std::size_t longestInfo = std::size_t{1} << 20;
constexpr std::size_t longestIdentifier = 1024;
constexpr std::string_view folderEnding = ".app";

// What the list of applications needs of an Info.plist, and what their icons need.
constexpr std::string_view listKeys[] = {"CFBundleIdentifier", "CFBundleDisplayName", "CFBundleName"};
constexpr auto allIconKeys = [] {
    std::array<std::string_view, 9> keys;
    auto next = keys.begin();
    for (const IconKeyForms& forms : iconKeys)
        next = std::ranges::copy(forms, next).out;
    return keys;
}();

std::string_view textForKey(const platform::Dictionary& dictionary, std::string_view key) {
    const platform::Value* value = dictionary.find(key);
    return value && value->string() ? std::string_view(*value->string()) : std::string_view();
}

std::optional<platform::Dictionary> readInfo(RationedFiles& files, const std::string& folder,
                                             std::span<const std::string_view> keys) {
    std::string& bytes = files.room();
    if (!files.readFile(folder + "/Info.plist", bytes, longestInfo)) return {};
    return platform::readRootKeys(bytes, keys);
}

platform::Dictionary readEnglishNames(RationedFiles& files, const std::string& folder) {
    std::string& bytes = files.room();
    if (!files.readFile(folder + "/en.lproj/InfoPlist.strings", bytes, longestInfo)) return {};
    return readStringsFile(bytes).value_or(platform::Dictionary());
}

// The identifier becomes a key of XML property lists, which cannot say control characters.
bool isUsableIdentifier(std::string_view identifier) {
    const auto isControl = [](char byte) { return static_cast<std::uint8_t>(byte) < 0x20 || byte == 0x7F; };
    return !identifier.empty() && identifier.size() <= longestIdentifier && std::ranges::none_of(identifier, isControl);
}

// A folder's name is bytes, and need not be UTF-8.
std::string textOfFileName(std::string_view name) {
    if (platform::isValidUtf8(name)) return std::string(name);
    std::string text;
    for (const char byte : name) {
        if (static_cast<std::uint8_t>(byte) < 0x80) {
            text += byte;
        } else {
            text += "\uFFFD";
        }
    }
    return text;
}

std::string folderName(std::string_view folder) {
    folder.remove_prefix(folder.rfind('/') + 1);
    folder.remove_suffix(folderEnding.size());
    return oneLineName(textOfFileName(folder));
}

// Key by key, the English text stands in for that of the Info.plist.
std::string displayName(const platform::Dictionary& info, const platform::Dictionary& english,
                        const std::string& folder) {
    for (const std::string_view key : {"CFBundleDisplayName", "CFBundleName"}) {
        for (const platform::Dictionary* source : {&english, &info}) {
            std::string name = oneLineName(textForKey(*source, key));
            if (!name.empty()) return name;
        }
    }
    return folderName(folder);
}

}  // namespace

std::optional<InstalledApplication> readApplication(RationedFiles& files, const std::string& folder,
                                                    std::string& problem) {
    const std::optional<platform::Dictionary> info = readInfo(files, folder, listKeys);
    if (!info) {
        problem = "it has no Info.plist that can be read";
        return std::nullopt;
    }
    const std::string_view identifier = textForKey(*info, "CFBundleIdentifier");
    if (!isUsableIdentifier(identifier)) {
        problem = "its Info.plist has no usable CFBundleIdentifier";
        return std::nullopt;
    }
    InstalledApplication application;
    application.identifier = identifier;
    application.displayName = displayName(*info, readEnglishNames(files, folder), folder);
    application.folder = folder;
    return application;
}

std::vector<std::string> readIconNames(RationedFiles& files, const std::string& folder,
                                       const platform::UIDevice& device) {
    const std::optional<platform::Dictionary> info = readInfo(files, folder, allIconKeys);
    return info ? iconNames(*info, device) : std::vector<std::string>();
}

}  // namespace hosts
