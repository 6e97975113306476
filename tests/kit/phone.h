// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/phones/phone_file_system.h"
#include "tests/kit/changed_variable.h"
#include "tests/kit/temporary_folder.h"

namespace kit {

/// The place where the settings lie on every phone.
constexpr const char* preferences = "var/mobile/Library/Preferences";
constexpr const char* settingsPath = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
/// Where the user's applications lie.
constexpr const char* userApplications = "/var/mobile/Containers/Bundle/Application";
constexpr const char* settingsName = "com.fenwary.trivel3.plist";

inline hosts::PhoneFileSystem openPhone(const std::string& folder,
                                        hosts::FileCalls& calls = hosts::FileCalls::system()) {
    auto phone = hosts::PhoneFileSystem::open(folder, calls);
    if (!phone) throw std::runtime_error{phone.error().text()};
    return *std::move(phone);
}

/// Replaces a file, whatever it holds. Gives what did not work, or nothing.
inline std::string replaceFile(platform::FileSystem& files, std::string_view path, std::string_view contents) {
    const auto written = files.changeFile(path, [contents = std::string(contents)](std::optional<std::string_view>) {
        return platform::Result(platform::NewContent{contents});
    });
    return written ? std::string() : written.error().text();
}
inline std::string replaceFile(platform::FileSystem&& files, std::string_view path, std::string_view contents) {
    return replaceFile(files, path, contents);
}

/// How many files of unfinished writes lie anywhere in the folder.
inline std::size_t temporariesIn(const std::string& folder) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{folder}) {
        if (entry.path().extension() == ".tmp") ++count;
    }
    return count;
}

/// A phone's folder, empty at first, beside which there is room for things outside of the phone.
struct Phone {
    TemporaryFolder around;
    std::string folder = around / "phone";
    /// What is kept of the phone's files goes with it.
    ChangedVariable state{"XDG_STATE_HOME", (around / "state").c_str()};

    Phone() { std::filesystem::create_directory(folder); }

    std::string operator/(std::string_view below) const { return folder + "/" + std::string{below}; }
    std::string settingsFile() const { return folder + settingsPath; }
    std::string preferencesFolder() const { return *this / preferences; }
};

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
    const std::string folder = std::string(userApplications) + "/3F2504E0-4F89-41D3-9A0C-0305E82C3301/Named.app";
    writeText(phone.folder + folder + "/Info.plist",
              settingsOf({{"CFBundleDisplayName", "<string>" + name + "</string>"},
                          {"CFBundleExecutable", "<string>Named</string>"},
                          {"CFBundleIdentifier", "<string>example.named</string>"}}));
}

}  // namespace kit
