// SPDX-License-Identifier: MIT
#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstdint>
#include <deque>
#include <new>

#include "hosts/notifications/session_bus.h"
#include "hosts/system/error_text.h"

namespace hosts {

namespace {

using platform::Problem;
using platform::Result;

// How a notification travels: a signal with the name as its one argument, a string. Other programs
// send and observe it by these names.
constexpr const char* path = "/com/fenwary/DarwinNotifyCenter";
constexpr const char* interface = "com.fenwary.DarwinNotifyCenter";
constexpr const char* member = "Posted";
constexpr const char* signature = "s";

// Nobody looks at a page meanwhile, so a busy bus may take its time.
constexpr std::chrono::microseconds subscriptionTimeout = std::chrono::seconds{5};

struct CloseBus {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};
using Connection = std::unique_ptr<sd_bus, CloseBus>;

struct UnrefSlot {
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};
using Slot = std::unique_ptr<sd_bus_slot, UnrefSlot>;

Problem noBus(int error) {
    return {{}, "no session bus", errorText(error == 0 ? ETIMEDOUT : -error)};
}

// Begins to connect; whether there is somebody at the other end shows as the connection is driven.
int connect(Connection& bus) {
    sd_bus* opened = nullptr;
    const int result = sd_bus_open_user(&opened);
    bus.reset(opened);
    return result;
}

// Drives the connection until `isDone` gives a positive number, or gives 0 when the time is up before.
// The library's own waiting has no limit that suits somebody who is looking at a switch.
template <typename IsDone>
int processUntil(sd_bus& bus, const Deadline& deadline, IsDone isDone) {
    constexpr std::uint64_t microseconds = 1000;  // in a millisecond
    while (true) {
        if (const int done = isDone(); done != 0) return done;
        const int processed = sd_bus_process(&bus, nullptr);
        if (processed < 0) return processed;
        const auto left = static_cast<std::uint64_t>(deadline.left());
        if (left == 0) return isDone();
        const int waited = processed > 0 ? 0 : sd_bus_wait(&bus, left * microseconds);
        if (waited < 0 && waited != -EINTR) return waited;
    }
}

int waitUntilReady(sd_bus& bus, const Deadline& deadline) {
    return processUntil(bus, deadline, [&bus] { return sd_bus_is_ready(&bus); });
}

int waitUntilWritten(sd_bus& bus, const Deadline& deadline) {
    return processUntil(bus, deadline, [&bus] {
        std::uint64_t queued = 0;
        const int result = sd_bus_get_n_queued_write(&bus, &queued);
        return result < 0 ? result : static_cast<int>(queued == 0);
    });
}

// The notifications on a connection of its own.
class SignalStream final : public NotificationStream {
public:
    explicit SignalStream(Connection bus) : _bus(std::move(bus)) {}

    // A negative errno value on failure.
    int subscribe() {
        sd_bus_set_method_call_timeout(_bus.get(), subscriptionTimeout.count());
        sd_bus_slot* subscription = nullptr;
        const int result = sd_bus_match_signal(_bus.get(), &subscription, nullptr, path, interface, member,
                                               &SignalStream::signalArrived, this);
        _subscription.reset(subscription);
        return result;
    }

    std::optional<std::string> next() override {
        int processed = 1;
        while (_arrived.empty() && processed > 0)
            processed = sd_bus_process(_bus.get(), nullptr);
        if (processed < 0) _end = Problem{{}, "the session bus is gone", errorText(-processed)};
        if (_arrived.empty()) return std::nullopt;
        std::string name = std::move(_arrived.front());
        _arrived.pop_front();
        return name;
    }

    int descriptor() const override { return sd_bus_get_fd(_bus.get()); }
    const std::optional<Problem>& ended() const override { return _end; }

private:
    static int signalArrived(sd_bus_message* message, void* stream, sd_bus_error*) {
        const char* name = nullptr;
        if (sd_bus_message_has_signature(message, signature) > 0 &&
            sd_bus_message_read(message, signature, &name) > 0) {
            return static_cast<SignalStream*>(stream)->take(name);
        }
        return 0;
    }

    // The library lets no exception through.
    int take(const char* name) {
        try {
            _arrived.emplace_back(name);
        } catch (const std::bad_alloc&) {
            return -ENOMEM;
        }
        return 0;
    }

    Connection _bus;
    Slot _subscription;
    std::deque<std::string> _arrived;
    std::optional<Problem> _end;
};

class SdSessionBus final : public SessionBus {
public:
    // A connection that was good at the last post may be that of a bus which has gone since; then the
    // one that stands in its place, if any, gets the notification. A bus that hangs keeps its connection.
    Result<platform::Done> post(const std::string& name, const Deadline& deadline) override {
        int result = _bus ? send(name, deadline) : -ENOTCONN;
        if (result < 0) {
            result = connect(_bus);
            if (result >= 0) result = send(name, deadline);
        }
        if (result < 0) _bus.reset();
        if (result <= 0) return noBus(result);
        return platform::Done();
    }

    Result<std::unique_ptr<NotificationStream>> observe() override {
        Connection bus;
        int result = connect(bus);
        if (result >= 0) result = waitUntilReady(*bus, busPatience);
        if (result <= 0) return noBus(result);
        auto stream = std::make_unique<SignalStream>(std::move(bus));
        result = stream->subscribe();
        if (result < 0) return Problem{{}, "the session bus takes no subscription", errorText(-result)};
        return std::unique_ptr<NotificationStream>(std::move(stream));
    }

private:
    // 0 when the time is up, a negative errno value on failure.
    int send(const std::string& name, const Deadline& deadline) {
        int result = waitUntilReady(*_bus, deadline);
        // What an earlier try has left with the library goes first, so that tries do not pile up.
        if (result > 0) result = waitUntilWritten(*_bus, deadline);
        if (result <= 0) return result;
        result = sd_bus_emit_signal(_bus.get(), path, interface, member, signature, name.c_str());
        return result < 0 ? result : waitUntilWritten(*_bus, deadline);
    }

    Connection _bus;
};

}  // namespace

}  // namespace hosts

extern "C" __attribute__((visibility("default"))) void trivel3MakeSessionBus(std::unique_ptr<hosts::SessionBus>& bus) {
    bus = std::make_unique<hosts::SdSessionBus>();
}
