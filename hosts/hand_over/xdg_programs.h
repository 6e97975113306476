// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

#include "platform/foundation/result.h"

namespace hosts {

/// Runs the programs by which files and addresses are handed to whatever the user's desktop has for
/// them (xdg-open, xdg-email). They are found on the PATH, started without a shell, and are given
/// neither this program's input and output nor its open files.
///
/// Makes sure that programs can be waited for, although whoever started this one may pay no heed to its own (SIGCHLD).
class XdgPrograms {
public:
    XdgPrograms();
    XdgPrograms(const XdgPrograms&) = delete;
    XdgPrograms& operator=(const XdgPrograms&) = delete;
    ~XdgPrograms() { reap(); }

    /// Runs the program `arguments[0]` and waits for its verdict, but not for longer than `patience`:
    /// on some desktops it stays for as long as what it has opened, and then has done its work. A
    /// problem when it is missing or reports a failure.
    platform::Result<platform::Done> run(const std::vector<std::string>& arguments);

    static constexpr std::chrono::seconds patience{2};

private:
    void reap();

    // Those that were not waited for to the end.
    std::vector<pid_t> _running;
};

}  // namespace hosts
