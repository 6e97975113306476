// SPDX-License-Identifier: MIT
#include "hosts/system/file_calls.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdio>

namespace hosts {

namespace {

int statusNow(int folder, const char* name, int flags, struct stat& status) {
    struct statx now;
    if (::statx(folder, name, flags | AT_STATX_FORCE_SYNC, STATX_BASIC_STATS, &now) != 0) return -1;
    status = {};
    status.st_dev = ::makedev(now.stx_dev_major, now.stx_dev_minor);
    status.st_ino = now.stx_ino;
    status.st_mode = now.stx_mode;
    status.st_nlink = now.stx_nlink;
    status.st_uid = now.stx_uid;
    status.st_gid = now.stx_gid;
    status.st_size = static_cast<off_t>(now.stx_size);
    status.st_mtim = {now.stx_mtime.tv_sec, now.stx_mtime.tv_nsec};
    status.st_ctim = {now.stx_ctime.tv_sec, now.stx_ctime.tv_nsec};
    return 0;
}

}  // namespace

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

ssize_t FileCalls::read(int file, void* bytes, std::size_t room) {
    return ::read(file, bytes, room);
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
    return statusNow(file, "", AT_EMPTY_PATH, status);
}

int FileCalls::statusIn(int folder, const char* name, struct stat& status) {
    return statusNow(folder, name, AT_SYMLINK_NOFOLLOW, status);
}

ssize_t FileCalls::readLink(int folder, const char* name, char* target, std::size_t room) {
    return ::readlinkat(folder, name, target, room);
}

ssize_t FileCalls::listAttributes(int file, char* names, std::size_t room) {
    return ::flistxattr(file, names, room);
}

ssize_t FileCalls::readAttribute(int file, const char* name, void* value, std::size_t room) {
    return ::fgetxattr(file, name, value, room);
}

int FileCalls::setAttribute(int file, const char* name, const void* value, std::size_t size) {
    return ::fsetxattr(file, name, value, size, 0);
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
