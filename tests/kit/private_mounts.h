// SPDX-License-Identifier: MIT
#pragma once

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "tests/kit/forked.h"

namespace kit {

inline constexpr const char* noMounts = "this machine lets no process mount for itself";

inline bool writeProcessFile(const char* path, std::string_view text) {
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    const bool isWritten = ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(file);
    return isWritten;
}

/// From here on this process may mount as it likes, and no other process sees it. False where the machine forbids it.
/// For a process of one thread, which has been forked for that.
inline bool enterPrivateMounts() {
    const std::string user = "0 " + std::to_string(::getuid()) + " 1";
    const std::string group = "0 " + std::to_string(::getgid()) + " 1";
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeProcessFile("/proc/self/setgroups", "deny") &&
           writeProcessFile("/proc/self/uid_map", user) && writeProcessFile("/proc/self/gid_map", group) &&
           ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// Mounts an empty file system that lives in memory.
inline bool mountMemory(const std::string& folder) {
    return ::mount("none", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
}

/// Whether a process can do both of the above; `noMounts` is why a test is skipped where it cannot.
inline bool mayMount() {
    static const bool may = runForked([] { return enterPrivateMounts() && mountMemory("/tmp") ? 0 : 1; }) == 0;
    return may;
}

}  // namespace kit
