// SPDX-License-Identifier: MIT
#include "hosts/linux/confined_open.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>

namespace hosts {

namespace {

// The kernel gives a confined look-up up with EAGAIN when something is renamed under it. That
// passes; an EAGAIN that does not (a lease on the file) must not hold anybody for ever.
constexpr int mostAttempts = 64;

bool isPassing(int error) {
    return error == EAGAIN || error == EINTR;
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
        file = calls.openInRoot(root, text.get(), flags | O_CLOEXEC);
        if (file >= 0 || !isPassing(errno)) break;
    }
    return Descriptor{file, calls};
}

}  // namespace hosts
