// SPDX-License-Identifier: MIT
#pragma once

namespace hosts::desktop {

/// Runs the program, and gives its exit status.
int runProgram(int argumentCount, char** arguments);

}  // namespace hosts::desktop
