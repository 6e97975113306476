// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

#include "hosts/system/descriptor.h"

namespace kit {

/// The way to a port of this machine, made longer: what goes through it arrives later, in both directions, and it can
/// be cut. It is at work in a thread of its own until it goes.
class Distance {
public:
    /// Each direction takes `delay`.
    Distance(std::uint16_t port, std::chrono::microseconds delay);
    Distance(const Distance&) = delete;
    Distance& operator=(const Distance&) = delete;
    ~Distance();

    /// What stands in for the port.
    std::uint16_t port() const { return _port; }

    /// Breaks every connection that there is now; others can be made.
    void cut() { ++_cuts; }
    /// Breaks each connection once so many more bytes have come from the far side; 0 for never.
    void cutAfter(std::uint64_t bytes) { _bytesLeft = bytes; }
    /// From here on nothing goes through, and nothing is broken.
    void fallSilent() { _isSilent = true; }
    void speakAgain() { _isSilent = false; }

    /// How many connections have been made.
    int connections() const { return _connections; }

private:
    class Way;
    class Line;
    void run();

    std::uint16_t _far;
    std::chrono::microseconds _delay;
    std::uint16_t _port = 0;
    hosts::Descriptor _listening;
    std::atomic<int> _cuts = 0;
    std::atomic<int> _connections = 0;
    std::atomic<std::uint64_t> _bytesLeft = 0;
    std::atomic<bool> _isSilent = false;
    std::atomic<bool> _isOver = false;
    std::thread _thread;
};

/// A socket of this machine that takes connections, and the port that it was given.
hosts::Descriptor listenOnLoopback(std::uint16_t& port);

}  // namespace kit
