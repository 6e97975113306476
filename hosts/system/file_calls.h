// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <cstddef>

namespace hosts {

/// The system calls by which the phone's files are opened and written, each as the kernel has it:
/// a negative result, with errno set, is a failure. The class makes the real calls; whoever must
/// see a write meet a full disk or a sudden death overrides the one call that is to go wrong.
class FileCalls {
public:
    static FileCalls& system();

    virtual ~FileCalls() = default;

    /// openat2 with every step of `path`, links and ".." included, kept below the folder `root`.
    virtual int openInRoot(int root, const char* path, int flags);
    virtual int openIn(int folder, const char* name, int flags, mode_t mode);
    virtual ssize_t read(int file, void* bytes, std::size_t room);
    virtual ssize_t write(int file, const void* bytes, std::size_t count);
    virtual int synchronise(int file);
    virtual int changeMode(int file, mode_t mode);
    virtual int changeOwner(int file, uid_t owner, gid_t group);
    /// An exclusive flock that does not wait.
    virtual int lock(int file);
    /// What the file is now, not what a file system that is elsewhere remembers of it. Device, inode, kind and
    /// permissions, names, owner, group, size and times are set.
    virtual int status(int file, struct stat& status);
    /// Likewise, of the entry itself, not of what a link leads to.
    virtual int statusIn(int folder, const char* name, struct stat& status);
    virtual ssize_t readLink(int folder, const char* name, char* target, std::size_t room);
    virtual ssize_t listAttributes(int file, char* names, std::size_t room);
    virtual ssize_t readAttribute(int file, const char* name, void* value, std::size_t room);
    virtual int setAttribute(int file, const char* name, const void* value, std::size_t size);
    virtual int makeFolder(int folder, const char* name, mode_t mode);
    virtual int rename(int folder, const char* from, const char* to);
    virtual int unlink(int folder, const char* name);
    virtual int close(int file);
};

/// What the call gives once no signal interrupts it, and, as long as that does not go on, no name stands for a file
/// that is being replaced (ESTALE). Either may happen to any call on a file system that is itself a program, as that of
/// a mounted phone often is. Not for close: what it was given is gone.
template <typename Call>
auto uninterrupted(Call call) {
    int namesLeft = 20;
    auto result = call();
    while (result < 0 && (errno == EINTR || (errno == ESTALE && --namesLeft > 0)))
        result = call();
    return result;
}

}  // namespace hosts
