// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/screen_signals.h"

#include <pthread.h>
#include <signal.h>

namespace hosts::terminal::screen {

void ScreenSignals::stopProcess() {
    struct sigaction usual {};
    struct sigaction before {};
    usual.sa_handler = SIG_DFL;
    sigset_t stopping;
    sigemptyset(&stopping);
    sigaddset(&stopping, SIGTSTP);
    ::sigaction(SIGTSTP, &usual, &before);
    ::raise(SIGTSTP);
    // It takes effect here.
    pthread_sigmask(SIG_UNBLOCK, &stopping, nullptr);
    pthread_sigmask(SIG_BLOCK, &stopping, nullptr);
    ::sigaction(SIGTSTP, &before, nullptr);
}

}  // namespace hosts::terminal::screen
