// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace hosts {

struct Sender {
    std::string name;  ///< may be empty
    std::string address;
};

/// Who writes mail on this machine: who the environment variable EMAIL names, else the user under
/// the machine's name. Mail programs put the user's own choice in its place.
Sender mailSender();

}  // namespace hosts
