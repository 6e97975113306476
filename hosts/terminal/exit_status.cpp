// SPDX-License-Identifier: MIT
#include "hosts/terminal/exit_status.h"

#include <cstdio>
#include <string>

#include "hosts/terminal/render/printable.h"

namespace hosts::terminal {

int fail(ExitStatus status, std::string_view message) {
    const std::string line = "trivel3ctl: " + printable(message) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    return status;
}

void print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

}  // namespace hosts::terminal
