// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace hosts::desktop {

/// What scripts rely on; the same as trivel3ctl's.
enum ExitStatus : int {
    done = 0,
    failed = 1,      ///< the thing asked for is not there or did not work
    wrongUsage = 2,  ///< the command line is wrong
};

/// Prints one line on standard error, under the program's name, and gives the status back. Whatever in
/// the message could steer a terminal is made visible.
int fail(ExitStatus status, std::string_view message);

}  // namespace hosts::desktop
