// SPDX-License-Identifier: MIT
#include "hosts/system/file_calls.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>

namespace hosts {

FileCalls& FileCalls::system() {
    static FileCalls calls;
    return calls;
}

int FileCalls::openInRoot(int root, const char* path, int flags) {
    open_how how{};
    how.flags = static_cast<unsigned>(flags);
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    return static_cast<int>(syscall(SYS_openat2, root, path, &how, sizeof how));
}

int FileCalls::openIn(int folder, const char* name, int flags, mode_t mode) {
    return ::openat(folder, name, flags, mode);
}

ssize_t FileCalls::write(int file, const void* bytes, std::size_t count) {
    return ::write(file, bytes, count);
}

int FileCalls::synchronise(int file) {
    return ::fsync(file);
}

int FileCalls::changeMode(int file, mode_t mode) {
    return ::fchmod(file, mode);
}

int FileCalls::changeOwner(int file, uid_t owner, gid_t group) {
    return ::fchown(file, owner, group);
}

int FileCalls::lock(int file) {
    return ::flock(file, LOCK_EX | LOCK_NB);
}

int FileCalls::status(int file, struct stat& status) {
    return ::fstat(file, &status);
}

int FileCalls::statusIn(int folder, const char* name, struct stat& status) {
    return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW);
}

ssize_t FileCalls::readLink(int folder, const char* name, char* target, std::size_t room) {
    return ::readlinkat(folder, name, target, room);
}

int FileCalls::makeFolder(int folder, const char* name, mode_t mode) {
    return ::mkdirat(folder, name, mode);
}

int FileCalls::rename(int folder, const char* from, const char* to) {
    return ::renameat(folder, from, folder, to);
}

int FileCalls::unlink(int folder, const char* name) {
    return ::unlinkat(folder, name, 0);
}

int FileCalls::close(int file) {
    return ::close(file);
}

}  // namespace hosts
