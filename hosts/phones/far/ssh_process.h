// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "hosts/system/deadline.h"
#include "hosts/system/descriptor.h"
#include "platform/foundation/result.h"

namespace hosts {

/// OpenSSH's client at work, and the bytes that go to and come from the program on the other side. It ends with this
/// object.
class SshProcess {
public:
    /// `command` is a shell's, as git takes one in its place; the words follow as they are. A key that ends this
    /// program ends ssh too, which asks its questions on the same terminal.
    static platform::Result<SshProcess> start(const std::string& command, const std::vector<std::string>& words);
    SshProcess(SshProcess&& other) noexcept;
    SshProcess& operator=(SshProcess&&) = delete;
    ~SshProcess();

    enum class Came { something, nothing, end };

    /// Hands on as much of `out` as is taken, which goes from it, and adds to `in` what has come. Waits until one of
    /// the two has gone on, or the time is up: then `nothing`.
    Came exchange(std::string& out, std::string& in, const Deadline& deadline);

    /// Readable when something has come.
    int descriptor() const { return _stream.get(); }

    /// The last that ssh, and what runs there, has complained of. After `end` all of it is there.
    std::string complaints();

private:
    SshProcess(pid_t process, Descriptor stream, Descriptor errors)
        : _process(process), _stream(std::move(stream)), _errors(std::move(errors)) {}
    void takeComplaints();
    bool write(std::string& out);
    Came read(std::string& in);

    pid_t _process;
    Descriptor _stream;
    Descriptor _errors;
    std::string _complaints;
};

}  // namespace hosts
