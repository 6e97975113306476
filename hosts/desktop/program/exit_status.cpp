// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/exit_status.h"

#include <cstdio>
#include <string>

#include "hosts/session/printable.h"

namespace hosts::desktop {

int fail(ExitStatus status, std::string_view message) {
    const std::string line = "trivel3-settings: " + printable(message) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    return status;
}

}  // namespace hosts::desktop
