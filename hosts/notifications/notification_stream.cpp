// SPDX-License-Identifier: MIT
#include "hosts/notifications/notification_stream.h"

#include <poll.h>

#include <array>
#include <cerrno>

namespace hosts {

std::optional<std::string> waitForNotification(NotificationStream& stream, int stopDescriptor, Deadline deadline) {
    while (true) {
        if (auto name = stream.next()) return name;
        if (stream.ended()) return std::nullopt;

        std::array<pollfd, 2> watched{{{stream.descriptor(), POLLIN, 0}, {stopDescriptor, POLLIN, 0}}};
        const int ready = ::poll(watched.data(), watched.size(), deadline.left());
        const bool interrupted = ready < 0 && errno == EINTR;
        if (ready == 0 || (ready < 0 && !interrupted)) return std::nullopt;
        if (!interrupted && watched[1].revents != 0) return std::nullopt;
    }
}

}  // namespace hosts
