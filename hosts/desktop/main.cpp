// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/program.h"

int main(int argumentCount, char** arguments) {
    return hosts::desktop::runProgram(argumentCount, arguments);
}
