// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <utility>

#include "hosts/system/file_calls.h"

namespace hosts {

/// Owns an open file, or nothing.
class Descriptor {
public:
    Descriptor() = default;
    /// Takes the result of an opening call as it is: a negative number is nothing.
    explicit Descriptor(int file, FileCalls& calls = FileCalls::system()) : _file(file), _calls(&calls) {}
    Descriptor(Descriptor&& other) noexcept : _file(other.release()), _calls(other._calls) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(_file, other._file);
        std::swap(_calls, other._calls);
        return *this;
    }
    /// What close answers is of no use here: a descriptor is gone either way, and whoever cares for
    /// what was written has had it synchronised before.
    /// errno stays as the call before left it.
    ~Descriptor() {
        const int error = errno;
        if (isOpen()) _calls->close(_file);
        errno = error;
    }

    bool isOpen() const { return _file >= 0; }
    int get() const { return _file; }
    int release() { return std::exchange(_file, -1); }

private:
    int _file = -1;
    FileCalls* _calls = &FileCalls::system();
};

}  // namespace hosts
