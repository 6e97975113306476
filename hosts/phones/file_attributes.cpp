// SPDX-License-Identifier: MIT
#include "hosts/phones/file_attributes.h"

#include <linux/limits.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace hosts {

namespace {

// The file system has no such thing, the process may not, or there is no such owner here.
bool isRefusal(int error) {
    return error == EPERM || error == EACCES || error == ENOTSUP || error == ENOSYS || error == EINVAL ||
           error == EOVERFLOW;
}

Given givenBy(int result) {
    if (result == 0) return Given::kept;
    return isRefusal(errno) ? Given::refused : Given::failed;
}

bool copyAttribute(FileCalls& calls, const Descriptor& from, const Descriptor& to, const char* name) {
    std::array<char, XATTR_SIZE_MAX> value;
    const ssize_t size =
        uninterrupted([&] { return calls.readAttribute(from.get(), name, value.data(), value.size()); });
    if (size < 0) return isRefusal(errno) || errno == ENODATA;
    const auto set = [&] { return calls.setAttribute(to.get(), name, value.data(), static_cast<std::size_t>(size)); };
    return uninterrupted(set) == 0 || isRefusal(errno);
}

}  // namespace

Given giveMode(FileCalls& calls, const Descriptor& file, mode_t mode) {
    return givenBy(uninterrupted([&] { return calls.changeMode(file.get(), mode); }));
}

Given giveOwner(FileCalls& calls, const Descriptor& file, uid_t owner, gid_t group) {
    return givenBy(uninterrupted([&] { return calls.changeOwner(file.get(), owner, group); }));
}

bool copyAttributes(FileCalls& calls, const Descriptor& from, const Descriptor& to) {
    std::array<char, XATTR_LIST_MAX> names;
    const ssize_t length = uninterrupted([&] { return calls.listAttributes(from.get(), names.data(), names.size()); });
    if (length < 0) return isRefusal(errno);
    for (const char* name = names.data(); name < names.data() + length; name += std::strlen(name) + 1) {
        if (!copyAttribute(calls, from, to, name)) return false;
    }
    return true;
}

}  // namespace hosts
