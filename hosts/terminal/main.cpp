// SPDX-License-Identifier: MIT
#include "hosts/session/program_entry.h"
#include "hosts/terminal/command_line.h"

int main(int argumentCount, char** arguments) {
    return hosts::runAsProgram(hosts::terminal::runCommandLine, argumentCount, arguments);
}
