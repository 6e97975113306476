// SPDX-License-Identifier: MIT
#include "hosts/system/state_folder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "hosts/system/new_file.h"

namespace hosts {

namespace {

using platform::Problem;
using platform::Result;

constexpr std::size_t longestPhoneName = 60;

std::string_view absolutePathIn(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value == '/' ? std::string_view{value} : std::string_view{};
}

Result<std::string> userFolder(const char* variable, std::string_view belowHome, const char* step) {
    constexpr std::string_view ours = "/trivel3";
    if (const auto named = absolutePathIn(variable); !named.empty()) return std::string{named}.append(ours);
    if (const auto home = absolutePathIn("HOME"); !home.empty()) {
        return std::string{home}.append(belowHome).append(ours);
    }
    return Problem{{}, step, std::string{"neither "} + variable + " nor HOME is an absolute path"};
}

}  // namespace

Result<std::string> stateFolder() {
    return userFolder("XDG_STATE_HOME", "/.local/state", "cannot tell where the user's state is kept");
}

Result<std::string> dataFolder() {
    return userFolder("XDG_DATA_HOME", "/.local/share", "cannot tell where the user's data is kept");
}

// FNV-1a.
std::string textNumber(std::string_view text) {
    std::uint64_t number = 0xcbf29ce484222325;
    for (const char letter : text)
        number = (number ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
    return digits.data();
}

std::string phoneFileName(const std::string& place) {
    const std::string name = fileNameFrom(std::filesystem::path{place}.filename().string(), "phone");
    return name.substr(0, longestPhoneName) + "-" + textNumber(place);
}

}  // namespace hosts
