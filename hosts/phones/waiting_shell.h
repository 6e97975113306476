// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "hosts/system/piped_process.h"
#include "platform/foundation/result.h"

namespace hosts {

/// A POSIX shell that waits, on a phone perhaps, so that a command costs one way there and back. Its problems are
/// passing ones: the shell is of no use any more, and whether the commands have run is not known.
class WaitingShell {
public:
    /// `process` is a shell that reads its commands from standard input.
    explicit WaitingShell(PipedProcess process);
    WaitingShell(const WaitingShell&) = delete;
    WaitingShell& operator=(const WaitingShell&) = delete;

    struct Answer {
        int status = 0;
        std::string output;  ///< standard output and standard error, without the line's end
    };

    /// Starts a command; answers come in the order of the commands.
    void send(const std::string& command);
    /// Commands whose answer has not been taken.
    std::size_t waiting() const { return _waiting; }
    platform::Result<Answer> takeAnswer();

    platform::Result<Answer> run(const std::string& command);

    bool isAlive() const { return _isAlive; }

private:
    platform::Problem lost(std::string reason);

    PipedProcess _process;
    std::string _mark;
    std::string _out;
    std::string _in;
    std::size_t _waiting = 0;
    bool _isAlive = true;
};

/// The word as a shell takes it for itself, whatever it holds.
std::string shellQuoted(std::string_view word);

}  // namespace hosts
