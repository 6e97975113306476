// SPDX-License-Identifier: MIT
#include "hosts/notifications/notification_stream.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

namespace hosts {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int forEver = -1;

int pollTimeout(std::optional<Clock::time_point> deadline) {
    if (!deadline) return forEver;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<long long>(left, 0, INT_MAX));
}

}  // namespace

std::optional<std::string> waitForNotification(NotificationStream& stream, int stopDescriptor,
                                               std::optional<std::chrono::milliseconds> timeout) {
    std::optional<Clock::time_point> deadline;
    if (timeout) deadline = Clock::now() + *timeout;
    while (true) {
        if (auto name = stream.next()) return name;
        if (!stream.lastError().empty()) return std::nullopt;

        std::array<pollfd, 2> watched{{{stream.descriptor(), POLLIN, 0}, {stopDescriptor, POLLIN, 0}}};
        const int ready = ::poll(watched.data(), watched.size(), pollTimeout(deadline));
        const bool interrupted = ready < 0 && errno == EINTR;
        if (ready == 0 || (ready < 0 && !interrupted)) return std::nullopt;
        if (!interrupted && watched[1].revents != 0) return std::nullopt;
    }
}

}  // namespace hosts
