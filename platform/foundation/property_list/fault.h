// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace platform::property_list {

/// Why some bytes are no property list, and which byte shows it.
struct Fault {
    std::string reason;
    std::size_t offset = 0;
};

}  // namespace platform::property_list
