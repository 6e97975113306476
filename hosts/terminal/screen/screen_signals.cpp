// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/screen_signals.h"

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace hosts::terminal::screen {
namespace {

sigset_t signalSet(std::initializer_list<int> numbers) {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : numbers)
        sigaddset(&set, number);
    return set;
}

}  // namespace

ScreenSignals::ScreenSignals() {
    const sigset_t all = signalSet({SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGCONT, SIGWINCH});
    _descriptor = Descriptor(::signalfd(-1, &all, SFD_CLOEXEC | SFD_NONBLOCK));
    pthread_sigmask(SIG_BLOCK, _descriptor.isOpen() ? &all : nullptr, &_before);
}

// What has arrived has had its effect; it must not end the program after all.
ScreenSignals::~ScreenSignals() {
    while (next()) {
    }
    pthread_sigmask(SIG_SETMASK, &_before, nullptr);
}

std::optional<int> ScreenSignals::next() {
    signalfd_siginfo arrived;
    if (!_descriptor.isOpen() || ::read(_descriptor.get(), &arrived, sizeof arrived) != sizeof arrived) {
        return std::nullopt;
    }
    return static_cast<int>(arrived.ssi_signo);
}

void ScreenSignals::stopProcess() {
    struct sigaction usual {};
    struct sigaction before {};
    usual.sa_handler = SIG_DFL;
    const sigset_t stopping = signalSet({SIGTSTP});
    ::sigaction(SIGTSTP, &usual, &before);
    ::raise(SIGTSTP);
    // It takes effect here.
    pthread_sigmask(SIG_UNBLOCK, &stopping, nullptr);
    pthread_sigmask(SIG_BLOCK, &stopping, nullptr);
    ::sigaction(SIGTSTP, &before, nullptr);
}

}  // namespace hosts::terminal::screen
