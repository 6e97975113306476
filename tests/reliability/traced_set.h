// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace reliability_test {

using namespace kit;

/// One of the system calls that a run of the program has made.
struct TracedCall {
    std::string name;
    std::size_t ofItsName;  ///< counted from 1: the first close is 1, and so is the first write
    std::size_t position;   ///< among all that are traced, from 0
    std::string line;       ///< as it is traced
};

/// `trivel3ctl set HotCorners off` on a phone, with a tracer that can make the kernel fail one call.
class TracedSet {
public:
    explicit TracedSet(const Phone& phone);

    /// Why no program can be traced here; empty where it can.
    static std::string whyNot();

    /// The system calls of the write, from the opening of the file's folder to its closing, in a run that nothing
    /// disturbs. Those on the way there, and those that tell the add-on of the change, are not among them.
    std::vector<TracedCall> callsOfTheWrite();

    /// Fails the call with that error, in place of making it.
    Outcome runWithError(const TracedCall& call, const std::string& error);
    /// Kills the program when it asks for the call, which is then not made.
    Outcome runAndKill(const TracedCall& call);

    /// The positions of the calls that the last run was disturbed at.
    std::vector<std::size_t> disturbedAt() const;

private:
    Outcome run(const std::string& injection);
    std::vector<TracedCall> traced() const;

    Trivel3ctl _ctl;
    std::string _log;
};

}  // namespace reliability_test
