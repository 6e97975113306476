// SPDX-License-Identifier: MIT
#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <memory>
#include <string>

namespace hosts {

struct CloseBus {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};
using Connection = std::unique_ptr<sd_bus, CloseBus>;

struct UnrefSlot {
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};
using Slot = std::unique_ptr<sd_bus_slot, UnrefSlot>;

/// How long a bus may take to let a client in, or to take a message, before it counts as absent.
constexpr std::chrono::milliseconds busPatience{1000};

/// A connection to the user's session bus on which messages can be sent at once. Null, with one line
/// in `error`, when there is none within `busPatience`.
Connection connectToSessionBus(std::string& error);

/// Writes out all that has been sent, within `busPatience`. A negative errno value on failure.
int flush(sd_bus& bus);

}  // namespace hosts
