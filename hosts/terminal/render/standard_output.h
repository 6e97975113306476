// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <string_view>

namespace hosts::terminal {

/// Prints text on standard output; what it holds beyond printable characters goes out as it is.
inline void print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

}  // namespace hosts::terminal
