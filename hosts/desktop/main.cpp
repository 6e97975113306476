// SPDX-License-Identifier: MIT
#include <csignal>
#include <string_view>

#include "hosts/desktop/program/program.h"
#include "hosts/desktop/program/waiting_window.h"
#include "hosts/session/program_entry.h"

int main(int argumentCount, char** arguments) {
    // A window stays, although whoever read what it has to say is gone.
    std::signal(SIGPIPE, SIG_IGN);
    const bool isWaitingWindow =
        argumentCount == 3 && std::string_view(arguments[1]) == hosts::desktop::waitingWindowWord;
    return hosts::runAsProgram(isWaitingWindow ? hosts::desktop::runWaitingWindow : hosts::desktop::runProgram,
                               argumentCount, arguments);
}
