// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace hosts::terminal {

/// What scripts rely on.
enum ExitStatus : int {
    done = 0,
    failed = 1,      ///< the thing asked for is not there or did not work
    wrongUsage = 2,  ///< the command line is wrong
};

/// Prints one line on standard error, under the program's name, and gives the status back. Whatever in
/// the message could steer a terminal (a key, a path, a file's label) is made visible.
int fail(ExitStatus status, std::string_view message);

/// Prints text on standard output; what it holds beyond printable characters goes out as it is.
void print(std::string_view text);

}  // namespace hosts::terminal
