// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/system/descriptor.h"

namespace test {

/// What a program left when it ended.
struct Outcome {
    int status = 0;  ///< its exit status, or minus the number of the signal that ended it
    std::string output;
    std::string errors;
    std::size_t peakMemory = 0;  ///< the most that it had, in bytes
    double processorTime = 0;    ///< in seconds, the kernel's work for it included
};

/// A program at work, with pipes to its standard streams. Both of its outputs are taken in whenever
/// this side waits for anything, so that neither side can hold up the other. It is killed at the end.
///
/// Whatever does not come within the time that a loaded machine may take throws std::runtime_error.
class RunningProgram {
public:
    static constexpr std::chrono::seconds patience{100};

    /// `command` begins with the program's path; `environment` is of the form NAME=VALUE and is all
    /// that the program sees.
    RunningProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment);
    /// Standard output is `output`, a terminal's say, or a device's; `reader`, where there is one, reads
    /// what is written there.
    RunningProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment, int output,
                   hosts::Descriptor reader = {});
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram();

    /// Writes to the program's standard input. What a program that reads no more is sent is lost.
    void send(std::string_view text);
    void endInput() { _input = {}; }

    /// The next line of standard output or standard error, without its end; nothing at the end.
    std::optional<std::string> readLine();
    std::optional<std::string> readErrorLine();

    void signal(int number);

    /// What the program, which is still at work, has of the machine: the most memory so far and the
    /// memory now, both resident and in bytes; its threads; its open files.
    std::size_t peakMemory() const { return statusNumber("VmHWM:") * 1024; }
    std::size_t memory() const { return statusNumber("VmRSS:") * 1024; }
    std::size_t threads() const { return statusNumber("Threads:"); }
    std::size_t openFiles() const;

    /// Ends its input and waits for its end: what it has written and has not been read yet.
    Outcome finish();

private:
    struct Stream {
        hosts::Descriptor pipe;
        std::string pending;
    };
    using Clock = std::chrono::steady_clock;

    void start(const std::vector<std::string>& command, const std::vector<std::string>& environment, int output);
    // Waits until there is something to read, or room to write where that is asked for, and reads.
    bool exchange(bool wantsToWrite, Clock::time_point deadline);
    void takeIn(Stream& stream);
    std::size_t statusNumber(std::string_view name) const;
    std::optional<std::string> readLineOf(Stream& stream);
    void waitForEnd();

    pid_t _process = -1;
    std::optional<int> _status;
    std::size_t _peakMemory = 0;
    double _processorTime = 0;
    hosts::Descriptor _input;
    Stream _output;
    Stream _errors;
};

}  // namespace test
