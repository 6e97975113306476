// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "hosts/system/deadline.h"
#include "hosts/system/descriptor.h"
#include "hosts/system/waiting.h"
#include "platform/foundation/result.h"

namespace hosts {

/// How long a program on a phone may take to answer before it counts as gone.
constexpr std::chrono::seconds answerPatience{15};

/// A program at work, and the bytes that go to it and come from it. It ends with this object.
class PipedProcess {
public:
    /// `command` is a shell's, as git takes one for ssh; the words follow as they are. A key that ends this program
    /// ends that one too, and it may ask its questions on the same terminal. `waiting`, where there is one, is asked
    /// while this side waits.
    static platform::Result<PipedProcess> start(const std::string& command, const std::vector<std::string>& words,
                                                std::shared_ptr<Waiting> waiting = nullptr);
    /// What is at the other end of this socket, which does not block, already; it is nobody's to end.
    explicit PipedProcess(Descriptor stream) : _process(-1), _stream(std::move(stream)) {}
    PipedProcess(PipedProcess&& other) noexcept;
    PipedProcess& operator=(PipedProcess&&) = delete;
    ~PipedProcess();

    enum class Came { something, nothing, end, stopped };

    /// Hands on as much of `out` as is taken, which goes from it, and adds to `in` what has come. Waits until one of
    /// the two has gone on, or the time is up, then `nothing`, or the user waits no longer, then `stopped`.
    Came exchange(std::string& out, std::string& in, const Deadline& deadline);

    /// Readable when something has come.
    int descriptor() const { return _stream.get(); }

    /// The last that it has complained of. After `end` all of it is there.
    std::string complaints();

private:
    PipedProcess(pid_t process, Descriptor stream, Descriptor errors)
        : _process(process), _stream(std::move(stream)), _errors(std::move(errors)) {}
    void takeComplaints();
    int patienceFor(const Deadline& deadline) const;
    bool write(std::string& out);
    Came read(std::string& in);

    pid_t _process;
    Descriptor _stream;
    Descriptor _errors;
    std::string _complaints;
    std::shared_ptr<Waiting> _waiting;
};

}  // namespace hosts
