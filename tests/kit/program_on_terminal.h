// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

#include "hosts/system/descriptor.h"
#include "tests/kit/child_process.h"

namespace kit {

/// A program before which somebody sits: all its streams are a terminal, which is the controlling one of a session of
/// its own. It is killed at the end, and its session's terminal with it.
///
/// Whatever does not come within ChildProcess::patience throws std::runtime_error.
class ProgramOnTerminal {
public:
    /// `environment` is all that the program sees.
    ProgramOnTerminal(const std::vector<std::string>& command, const Environment& environment);
    ProgramOnTerminal(const ProgramOnTerminal&) = delete;
    ProgramOnTerminal& operator=(const ProgramOnTerminal&) = delete;
    ~ProgramOnTerminal();

    /// As by keys: what the terminal makes a signal of ("\x03") is one.
    void type(std::string_view keys);
    /// Waits until the text has been shown once more than at the last call.
    void waitFor(std::string_view text);
    /// Everything that the terminal has shown, with its line ends.
    const std::string& shown() const { return _shown; }

    /// Waits for the program's end: its exit status, or minus the number of the signal that ended it.
    int finish();

    /// Whether the terminal shows what is typed.
    bool echoes() const;
    /// The command lines of the session's programs that are still there, words parted by blanks.
    std::vector<std::string> programs() const;
    void waitUntilAllAreGone() const;

private:
    // False at the end of what is shown.
    bool takeIn();

    pid_t _process = -1;
    bool _hasEnded = false;
    hosts::Descriptor _terminal;
    std::string _shown;
    std::size_t _seen = 0;
};

}  // namespace kit
