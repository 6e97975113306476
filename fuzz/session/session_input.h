// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

/// What a session begins with, and its form as bytes: a byte for the device, a byte for the page that is
/// opened first, two bytes for the settings file's length, the settings file, the exceptions file.
struct SessionInput {
    std::uint8_t device = 0;
    std::uint8_t firstPage = 0;
    std::string settings;
    std::string exceptions;

    /// Any bytes are some input.
    static SessionInput parse(std::string_view bytes);
    std::string bytes() const;
};

}  // namespace fuzz
