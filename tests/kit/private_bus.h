// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "tests/kit/child_process.h"
#include "tests/kit/temporary_folder.h"

namespace kit {

/// A message bus of the test's own, on a socket in a folder of its own.
class PrivateBus {
public:
    PrivateBus();

    std::string address() const { return "unix:path=" + socket(); }
    /// The folder of the socket, which is named "bus" as in a user's run-time folder.
    std::string folder() const { return _folder.path(); }

    void signal(int number) { _daemon->signal(number); }
    void stop();
    /// Starts it again on the same socket, and returns when it can be reached.
    void restart();

private:
    std::string socket() const { return _folder / "bus"; }

    TemporaryFolder _folder;
    std::optional<ChildProcess> _daemon;
};

/// Makes that bus the session bus of this process and its children while it lives.
class SessionBusAddress {
public:
    explicit SessionBusAddress(const std::string& address);
    SessionBusAddress(const SessionBusAddress&) = delete;
    SessionBusAddress& operator=(const SessionBusAddress&) = delete;
    ~SessionBusAddress();
};

}  // namespace kit
