// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/exit_status.h"

#include <cstdio>

namespace hosts::desktop {

int fail(ExitStatus status, std::string_view message) {
    std::fprintf(stderr, "trivel3-settings: %.*s\n", static_cast<int>(message.size()), message.data());
    return status;
}

}  // namespace hosts::desktop
