// SPDX-License-Identifier: MIT
#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "hosts/system/descriptor.h"

namespace kit {

/// A stream socket bound to a path that nothing has yet.
inline hosts::Descriptor bindSocket(const std::string& path) {
    hosts::Descriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    if (::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::system_error{errno, std::generic_category(), path};
    }
    return socket;
}

}  // namespace kit
