// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

#include "hosts/phones/phone_file_system.h"
#include "temporary_folder.h"

namespace test {

/// The place where the settings lie on every phone.
constexpr const char* preferences = "var/mobile/Library/Preferences";
constexpr const char* settingsPath = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
constexpr const char* settingsName = "com.fenwary.trivel3.plist";

inline hosts::PhoneFileSystem openPhone(const std::string& folder,
                                        hosts::FileCalls& calls = hosts::FileCalls::system()) {
    std::string error;
    auto phone = hosts::PhoneFileSystem::open(folder, error, calls);
    if (!phone) throw std::runtime_error{error};
    return std::move(*phone);
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

    Phone() { std::filesystem::create_directory(folder); }

    std::string operator/(std::string_view below) const { return folder + "/" + std::string{below}; }
    std::string settingsFile() const { return folder + settingsPath; }
    std::string preferencesFolder() const { return *this / preferences; }
};

}  // namespace test
