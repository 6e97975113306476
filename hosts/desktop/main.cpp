// SPDX-License-Identifier: MIT
#include <csignal>

#include "hosts/desktop/program/program.h"
#include "hosts/session/program_entry.h"

int main(int argumentCount, char** arguments) {
    // A window stays, although whoever read what it has to say is gone.
    std::signal(SIGPIPE, SIG_IGN);
    return hosts::runAsProgram(hosts::desktop::runProgram, argumentCount, arguments);
}
