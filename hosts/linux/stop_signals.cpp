// SPDX-License-Identifier: MIT
#include "hosts/linux/stop_signals.h"

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace hosts {

StopSignals::StopSignals() {
    sigset_t stopping;
    sigemptyset(&stopping);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&stopping, signal);
    _descriptor = Descriptor{::signalfd(-1, &stopping, SFD_CLOEXEC | SFD_NONBLOCK)};
    pthread_sigmask(SIG_BLOCK, _descriptor.isOpen() ? &stopping : nullptr, &_before);
}

// What has arrived has had its effect; it must not end the program after all.
StopSignals::~StopSignals() {
    signalfd_siginfo arrived;
    while (_descriptor.isOpen() && ::read(_descriptor.get(), &arrived, sizeof arrived) > 0) {
    }
    pthread_sigmask(SIG_SETMASK, &_before, nullptr);
}

}  // namespace hosts
