// SPDX-License-Identifier: MIT
#include "hosts/system/arriving_signals.h"

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace hosts {

ArrivingSignals::ArrivingSignals(std::initializer_list<int> numbers) {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : numbers)
        sigaddset(&set, number);
    _descriptor = Descriptor{::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK)};
    pthread_sigmask(SIG_BLOCK, _descriptor.isOpen() ? &set : nullptr, &_before);
}

// What has arrived has had its effect; it must not end the program after all.
ArrivingSignals::~ArrivingSignals() {
    while (next()) {
    }
    pthread_sigmask(SIG_SETMASK, &_before, nullptr);
}

std::optional<int> ArrivingSignals::next() {
    signalfd_siginfo arrived;
    if (!_descriptor.isOpen() || ::read(_descriptor.get(), &arrived, sizeof arrived) != sizeof arrived) {
        return std::nullopt;
    }
    return static_cast<int>(arrived.ssi_signo);
}

}  // namespace hosts
