// SPDX-License-Identifier: MIT
#pragma once

namespace hosts::terminal {

/// Reads the command line, runs the subcommand that it names and gives the program's exit status.
int runCommandLine(int argumentCount, char** arguments);

}  // namespace hosts::terminal
