// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/foundation/result.h"

namespace hosts {

/// What scripts rely on.
enum ExitStatus : int {
    done = 0,
    failed = 1,      ///< the thing asked for is not there or did not work
    wrongUsage = 2,  ///< the command line is wrong
    differs = 3,     ///< what was compared is not the same, where that was asked
};

/// Prints one line on standard error, under the name of the program, made fit for a terminal as that of `fail`.
void warn(std::string_view message);

/// Prints one line on standard error, under the name of the program, and gives the status back. Whatever in
/// the message could steer a terminal (a key, a path, a file's label) is made visible.
int fail(ExitStatus status, std::string_view message);
inline int fail(ExitStatus status, const platform::Problem& problem) {
    return fail(status, problem.text());
}

}  // namespace hosts
