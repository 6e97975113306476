// SPDX-License-Identifier: MIT
// Prints "listening", then a line for each notification as it arrives, until a signal asks it to
// end (exit status 0) or the bus goes (1, with the reason on standard error).
// Usage: notification_listener MODULE
#include <cstdio>

#include "hosts/notifications/session_notify_center.h"
#include "hosts/system/arriving_signals.h"

namespace {

void printLine(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

int fail(const std::string& reason) {
    std::fprintf(stderr, "%s\n", reason.c_str());
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const hosts::StopSignals stop;
    hosts::SessionNotifyCenter center{argv[1]};
    const auto stream = center.observe();
    if (!stream) return fail(stream.error().text());
    printLine("listening");
    while (const auto name = hosts::waitForNotification(**stream, stop.descriptor()))
        printLine(*name);
    const auto& end = (*stream)->ended();
    return end ? fail(end->text()) : 0;
}
