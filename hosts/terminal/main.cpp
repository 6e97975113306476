// SPDX-License-Identifier: MIT
#include <cstdio>

#include "hosts/terminal/command_line.h"
#include "hosts/terminal/exit_status.h"

int main(int argumentCount, char** arguments) {
    const int status = hosts::terminal::runCommandLine(argumentCount, arguments);
    // Output that could not be written, on a full disk say, is a failure too.
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        return hosts::terminal::fail(hosts::terminal::failed, "standard output cannot be written");
    }
    return status;
}
