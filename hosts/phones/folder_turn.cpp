// SPDX-License-Identifier: MIT
#include "hosts/phones/folder_turn.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include "hosts/system/deadline.h"

namespace hosts {
namespace {

constexpr std::chrono::seconds longestTurn{2};
// Short beside a write: whoever has just given the lock back may ask for it again at once.
constexpr std::chrono::microseconds turnPeriod{100};

}  // namespace

bool waitForTurn(FileCalls& calls, const Descriptor& folder) {
    const Deadline deadline{longestTurn};
    while (uninterrupted([&] { return calls.lock(folder.get()); }) != 0) {
        if (errno != EWOULDBLOCK) return true;
        if (deadline.left() == 0) return false;
        std::this_thread::sleep_for(turnPeriod);
    }
    return true;
}

}  // namespace hosts
