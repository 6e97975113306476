// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <system_error>

namespace hosts {

/// What an errno value means, in words.
inline std::string errorText(int error) {
    return std::generic_category().message(error);
}

}  // namespace hosts
