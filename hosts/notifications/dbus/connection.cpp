// SPDX-License-Identifier: MIT
#include "hosts/notifications/dbus/connection.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include "hosts/system/error_text.h"

namespace hosts {

namespace {

using Clock = std::chrono::steady_clock;

// Drives the connection until `isDone` gives a positive number. The library's own waiting has no
// limit that suits somebody who is looking at a switch.
template <typename IsDone>
int processUntil(sd_bus& bus, IsDone isDone) {
    const auto deadline = Clock::now() + busPatience;
    while (true) {
        const int done = isDone();
        if (done != 0) return done;
        const int processed = sd_bus_process(&bus, nullptr);
        if (processed < 0) return processed;
        const auto left = std::chrono::ceil<std::chrono::microseconds>(deadline - Clock::now()).count();
        if (left <= 0) return -ETIMEDOUT;
        const int waited = processed > 0 ? 0 : sd_bus_wait(&bus, static_cast<std::uint64_t>(left));
        if (waited < 0 && waited != -EINTR) return waited;
    }
}

}  // namespace

Connection connectToSessionBus(std::string& error) {
    sd_bus* opened = nullptr;
    int result = sd_bus_open_user(&opened);
    Connection bus{opened};
    if (result >= 0) {
        result = processUntil(*bus, [&] { return sd_bus_is_ready(bus.get()); });
    }
    if (result >= 0) return bus;
    error = "no session bus: " + errorText(-result);
    return nullptr;
}

int flush(sd_bus& bus) {
    return processUntil(bus, [&] {
        std::uint64_t queued = 0;
        const int result = sd_bus_get_n_queued_write(&bus, &queued);
        if (result < 0) return result;
        return queued == 0 ? 1 : 0;
    });
}

}  // namespace hosts
