// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace platform {

struct UIFont {
    /// The font's name, or one of the two stand-ins for the system's own faces.
    std::string name = systemName;
    double pointSize = 17;

    static constexpr const char* systemName = "system";
    static constexpr const char* boldSystemName = "system-bold";

    static UIFont systemFontOfSize(double size) { return {systemName, size}; }
    static UIFont boldSystemFontOfSize(double size) { return {boldSystemName, size}; }
    static UIFont fontWithName_size(std::string name, double size) { return {std::move(name), size}; }

    bool operator==(const UIFont&) const = default;
};

}  // namespace platform
