// SPDX-License-Identifier: MIT
// Posts each of the names that it is given, and ends at once.
// Usage: notification_poster MODULE NAME…
#include <cstdio>

#include "hosts/notifications/session_notify_center.h"

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    hosts::SessionNotifyCenter center{argv[1]};
    for (int argument = 2; argument < argc; ++argument)
        center.postNotification(argv[argument]);
    const auto posted = center.flush();
    if (posted) return 0;
    std::fprintf(stderr, "%s\n", posted.error().text().c_str());
    return 1;
}
