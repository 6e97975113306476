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
    void cut() { ++_breaks; }
    /// Breaks the connection on which the last of so many more bytes goes, in either direction, once it has arrived; 0
    /// for never. To be called while nothing is under way.
    void cutAfter(std::uint64_t bytes) { _meter.left = bytes; }
    /// From here on nothing goes through, and nothing is broken.
    void fallSilent() { _isSilent = true; }
    void speakAgain() { _isSilent = false; }

    /// How many connections have been made.
    int connections() const { return _connections; }
    /// How many bytes have arrived, in both directions.
    std::uint64_t bytes() const { return _meter.bytes; }
    /// How often the near side has said something after the far side had: how many questions there were, where each
    /// waits for its answer.
    int questions() const { return _meter.questions; }

    /// Where `cutAfter` has cut.
    struct Cut {
        int question = 0;  ///< counted as `questions` does
        bool isOfAnswer = false;
    };
    int cuts() const { return _meter.cuts; }
    Cut lastCut() const { return {_meter.cutQuestion, _meter.isCutOfAnswer}; }

private:
    class Way;
    class Line;
    enum class Direction { there, back };

    /// What has gone through, and how much may still go until there is a cut.
    struct Meter {
        std::uint64_t allowed() const;
        /// False where that was the last.
        bool count(Direction direction, std::uint64_t more);

        std::atomic<std::uint64_t> left = 0;
        std::atomic<std::uint64_t> bytes = 0;
        std::atomic<int> questions = 0;
        std::atomic<int> cuts = 0;
        std::atomic<int> cutQuestion = 0;
        std::atomic<bool> isCutOfAnswer = false;
        Direction last = Direction::back;
    };

    void run();

    std::uint16_t _far;
    std::chrono::microseconds _delay;
    std::uint16_t _port = 0;
    hosts::Descriptor _listening;
    std::atomic<int> _breaks = 0;
    std::atomic<int> _connections = 0;
    Meter _meter;
    std::atomic<bool> _isSilent = false;
    std::atomic<bool> _isOver = false;
    std::thread _thread;
};

/// What each direction takes where changes are counted: as long as to a phone that is far where a number of them is
/// asked for (`changesAsked`), and hardly any time else.
std::chrono::microseconds delayOfCounts();

/// A socket of this machine that takes connections, and the port that it was given.
hosts::Descriptor listenOnLoopback(std::uint16_t& port);

}  // namespace kit
