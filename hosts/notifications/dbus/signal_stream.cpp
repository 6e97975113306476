// SPDX-License-Identifier: MIT
#include "hosts/notifications/dbus/signal_stream.h"

#include "hosts/notifications/dbus/notification_signal.h"
#include "hosts/system/error_text.h"

namespace hosts {

namespace {

// Nobody looks at a page meanwhile, so a busy bus may take its time.
constexpr std::chrono::microseconds subscriptionTimeout = std::chrono::seconds{5};

}  // namespace

std::unique_ptr<SignalStream> SignalStream::subscribe(Connection bus, std::string& error) {
    std::unique_ptr<SignalStream> stream{new SignalStream{std::move(bus)}};
    sd_bus* const connection = stream->_bus.get();
    sd_bus_set_method_call_timeout(connection, subscriptionTimeout.count());
    sd_bus_slot* subscription = nullptr;
    const int result =
        sd_bus_match_signal(connection, &subscription, nullptr, notificationSignal::path, notificationSignal::interface,
                            notificationSignal::member, &SignalStream::signalArrived, stream.get());
    if (result < 0) {
        error = "the session bus takes no subscription: " + errorText(-result);
        return nullptr;
    }
    stream->_subscription.reset(subscription);
    return stream;
}

int SignalStream::signalArrived(sd_bus_message* message, void* stream, sd_bus_error*) {
    const char* name = nullptr;
    if (sd_bus_message_has_signature(message, notificationSignal::signature) > 0 &&
        sd_bus_message_read(message, notificationSignal::signature, &name) > 0) {
        static_cast<SignalStream*>(stream)->_arrived.emplace_back(name);
    }
    return 0;
}

std::optional<std::string> SignalStream::next() {
    int processed = 1;
    while (_arrived.empty() && processed > 0)
        processed = sd_bus_process(_bus.get(), nullptr);
    if (processed < 0) _lastError = "the session bus is gone: " + errorText(-processed);
    if (_arrived.empty()) return std::nullopt;
    std::string name = std::move(_arrived.front());
    _arrived.pop_front();
    return name;
}

int SignalStream::descriptor() const {
    return sd_bus_get_fd(_bus.get());
}

}  // namespace hosts
