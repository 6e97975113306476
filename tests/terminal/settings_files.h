// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "phone.h"

/// Settings files for a test to put on a phone, and to find there.
namespace test {

/// A property list around the root element's lines.
inline std::string propertyList(std::string_view root) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n" +
           std::string(root) + "</plist>\n";
}

/// A settings file as the pane writes it: keys with their values' elements, in the order of the keys.
inline std::string settingsOf(const std::vector<std::pair<std::string, std::string>>& entries) {
    std::string lines;
    for (const auto& [key, value] : entries)
        lines += "\t<key>" + key + "</key>\n\t" + value + "\n";
    return propertyList("<dict>\n" + lines + "</dict>\n");
}

/// A binary property list that holds {"Odd": null}, which XML cannot say.
inline std::string settingsWithNull() {
    using namespace std::string_literals;
    const std::string objects = "\xD1\x01\x02\x53Odd\x00"s;  // the dictionary, its key, its value
    const std::string offsets = "\x08\x0B\x0F"s;
    const std::string trailer = std::string(6, '\0') + "\x01\x01"s + std::string(7, '\0') + "\x03"s +
                                std::string(8, '\0') + std::string(7, '\0') + "\x10"s;
    return "bplist00" + objects + offsets + trailer;
}

inline void writeSettings(const Phone& phone, std::string_view contents) {
    writeText(phone.settingsFile(), contents);
}
inline std::string readSettings(const Phone& phone) {
    return readText(phone.settingsFile());
}

/// Installs a user application of that name.
inline void addApplication(const Phone& phone, const std::string& name) {
    const std::string folder =
        "var/mobile/Containers/Bundle/Application/3F2504E0-4F89-41D3-9A0C-0305E82C3301/Named.app";
    writeText(phone / (folder + "/Info.plist"), settingsOf({{"CFBundleDisplayName", "<string>" + name + "</string>"},
                                                            {"CFBundleExecutable", "<string>Named</string>"},
                                                            {"CFBundleIdentifier", "<string>example.named</string>"}}));
}

}  // namespace test
