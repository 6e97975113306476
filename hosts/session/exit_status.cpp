// SPDX-License-Identifier: MIT
#include "hosts/session/exit_status.h"

#include <errno.h>

#include <cstdio>
#include <string>

#include "hosts/session/printable.h"

namespace hosts {

void warn(std::string_view message) {
    const std::string line = std::string(program_invocation_short_name) + ": " + printable(message) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

int fail(ExitStatus status, std::string_view message) {
    warn(message);
    return status;
}

}  // namespace hosts
