// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "hosts/system/descriptor.h"

namespace test {

/// Another program at work, whose standard output is read line by line. It is killed at the end.
class ChildProcess {
public:
    /// `command` begins with the program's path.
    explicit ChildProcess(const std::vector<std::string>& command);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// The next line, without its end; nothing at the end of the output or when none comes in time.
    std::optional<std::string> readLine(std::chrono::milliseconds patience = std::chrono::seconds{20});
    void signal(int number);
    /// Waits for its end: the exit status, or minus the number of the signal that ended it.
    int wait();

private:
    bool readMore(std::chrono::milliseconds patience);

    pid_t _process = -1;
    std::optional<int> _ended;
    hosts::Descriptor _output;
    std::string _pending;
};

}  // namespace test
