// SPDX-License-Identifier: MIT
#include "hosts/phones/confined_open.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "hosts/phones/confined_walk.h"

namespace hosts {

namespace {

// The kernel gives a confined look-up up with EAGAIN when something is renamed meanwhile, anywhere on the machine. That
// passes; an EAGAIN that does not (a lease on the file) must not hold anybody for ever.
constexpr int mostAttempts = 64;

// Sandboxes that do not know the call may refuse it with EPERM. Where it, or EAGAIN, was the file's, the walk meets it
// again.
bool mayBeWalked(int error) {
    return error == ENOSYS || error == EPERM || error == EAGAIN;
}

}  // namespace

PathText::PathText(std::string_view path) {
    if (path.size() >= sizeof _text) {
        _error = ENAMETOOLONG;
    } else if (std::memchr(path.data(), '\0', path.size()) != nullptr) {
        _error = EINVAL;
    } else {
        path.copy(_text, path.size());
        _text[path.size()] = '\0';
    }
}

const char* PathText::get() const {
    if (_error == 0) return _text;
    errno = _error;
    return nullptr;
}

Descriptor openConfined(FileCalls& calls, int root, std::string_view path, int flags) {
    const PathText text{path};
    if (text.get() == nullptr) return {};
    int file = -1;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        file = uninterrupted([&] { return calls.openInRoot(root, text.get(), flags | O_CLOEXEC); });
        if (file >= 0 || errno != EAGAIN) break;
    }
    if (file < 0 && mayBeWalked(errno)) return walkConfined(calls, root, text.get(), flags);
    return Descriptor{file, calls};
}

Descriptor openEntry(FileCalls& calls, const Descriptor& folder, const std::string& name, int flags, mode_t mode) {
    return Descriptor{uninterrupted([&] { return calls.openIn(folder.get(), name.c_str(), flags | O_CLOEXEC, mode); }),
                      calls};
}

std::string machinePath(int file) {
    const std::string name = "/proc/self/fd/" + std::to_string(file);
    char path[PATH_MAX];
    const ssize_t length = ::readlink(name.c_str(), path, sizeof path);
    return length < 0 ? std::string{} : std::string{path, static_cast<std::size_t>(length)};
}

}  // namespace hosts
