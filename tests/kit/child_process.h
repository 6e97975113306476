// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/system/descriptor.h"

namespace kit {

/// Variables by their names.
using Environment = std::map<std::string, std::string>;
/// That of this process.
Environment ownEnvironment();

/// What a program left when it ended.
struct Outcome {
    int status = 0;  ///< its exit status, or minus the number of the signal that ended it
    std::string output;
    std::string errors;
    std::size_t peakMemory = 0;  ///< the most that it had, in bytes
    double processorTime = 0;    ///< in seconds, the kernel's work for it included
};

/// The lines of a text, without their ends.
std::vector<std::string> linesOf(const std::string& text);

/// A program at work, with pipes to its standard streams. Its outputs are taken in whenever this side
/// waits for anything, so that neither side can hold up the other. It is killed at the end.
///
/// Whatever does not come within the time that a loaded machine may take throws std::runtime_error.
class ChildProcess {
public:
    static constexpr std::chrono::seconds patience{250};

    /// `command` begins with the program's path. What the program complains of is seen where this
    /// process's own complaints are, and it has this process's environment.
    explicit ChildProcess(const std::vector<std::string>& command);
    /// `environment` is all that the program sees.
    ChildProcess(const std::vector<std::string>& command, const Environment& environment);
    /// Standard output is `output`, a terminal's say, or a device's; `reader`, where there is one, reads
    /// what is written there.
    ChildProcess(const std::vector<std::string>& command, const Environment& environment, int output,
                 hosts::Descriptor reader = {});
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// Writes to the program's standard input. What a program that reads no more is sent is lost.
    void send(std::string_view text);
    void endInput() { _input = {}; }

    /// The next line of standard output or standard error, without its end; nothing at the end.
    std::optional<std::string> readLine();
    std::optional<std::string> readErrorLine();
    /// Nothing also when no line comes in that time.
    std::optional<std::string> readLine(std::chrono::milliseconds limit);

    void signal(int number);
    bool hasEnded();

    /// What the program, which is still at work, has of the machine: the most memory so far and the
    /// memory now, both resident and in bytes; its threads; its open files.
    std::size_t peakMemory() const { return statusNumber("VmHWM:") * 1024; }
    std::size_t memory() const { return statusNumber("VmRSS:") * 1024; }
    std::size_t threads() const { return statusNumber("Threads:"); }
    std::size_t openFiles() const;

    /// Ends its input and waits for its end: what it has written and has not been read yet.
    Outcome finish();
    /// The same for who asks for its status alone; the rest can still be read.
    int wait();

private:
    struct Stream {
        hosts::Descriptor pipe;
        std::string pending;
    };
    using Clock = std::chrono::steady_clock;

    void start(const std::vector<std::string>& command, const Environment& environment, int output, int errors);
    // Waits until there is something to read, or room to write where that is asked for, and reads. Whether
    // there is room; nothing when the time is up.
    std::optional<bool> exchange(bool wantsToWrite, Clock::time_point deadline);
    bool exchangeInTime(bool wantsToWrite, Clock::time_point deadline);
    void takeIn(Stream& stream);
    std::optional<std::string> lineOf(Stream& stream);
    std::optional<std::string> readLineOf(Stream& stream);
    std::size_t statusNumber(std::string_view name) const;

    pid_t _process = -1;
    Outcome _outcome;
    bool _ended = false;
    hosts::Descriptor _input;
    Stream _output;
    Stream _errors;
};

}  // namespace kit
