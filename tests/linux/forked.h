// SPDX-License-Identifier: MIT
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace test {

/// Starts `action` in a copy of this process, whose exit status is what it returns.
template <typename Action>
pid_t startForked(Action action) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(action());
    return child;
}

/// The exit status of the child, or minus the number of the signal that ended it.
inline int waitForChild(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) return -1000;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

template <typename Action>
int runForked(Action action) {
    return waitForChild(startForked(action));
}

}  // namespace test
