// SPDX-License-Identifier: MIT
#include "hosts/terminal/exit_status.h"

#include <cstdio>

namespace hosts::terminal {

int fail(ExitStatus status, std::string_view message) {
    std::fprintf(stderr, "trivel3ctl: %.*s\n", static_cast<int>(message.size()), message.data());
    return status;
}

void print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

}  // namespace hosts::terminal
