// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace platform::property_list {

/// Equality, for comparing many keys with a few: keys of one length mostly begin alike ("CFBundle…",
/// "com.example…") and end differently.
inline bool isSameKey(std::string_view one, std::string_view other) {
    return one.size() == other.size() && (one.empty() || (one.back() == other.back() && one == other));
}

}  // namespace platform::property_list
