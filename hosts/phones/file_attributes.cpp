// SPDX-License-Identifier: MIT
#include "hosts/phones/file_attributes.h"

#include <cerrno>

namespace hosts {

namespace {

// The file system has no such thing, the process may not, or there is no such owner here.
bool isRefusal(int error) {
    return error == EPERM || error == EACCES || error == ENOTSUP || error == ENOSYS || error == EINVAL ||
           error == EOVERFLOW;
}

}  // namespace

bool giveMode(FileCalls& calls, const Descriptor& file, mode_t mode) {
    return uninterrupted([&] { return calls.changeMode(file.get(), mode); }) == 0 || isRefusal(errno);
}

bool giveOwner(FileCalls& calls, const Descriptor& file, uid_t owner, gid_t group) {
    return uninterrupted([&] { return calls.changeOwner(file.get(), owner, group); }) == 0 || isRefusal(errno);
}

}  // namespace hosts
