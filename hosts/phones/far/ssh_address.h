// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/result.h"

namespace hosts {

/// Where a phone is reached by SSH, and the folder there that is its root.
struct SshAddress {
    std::string user;          ///< empty where ssh's configuration is to say
    std::string host;          ///< a name that ssh knows, or an address; one of IPv6 without brackets
    std::string port;          ///< decimal, 1 to 65535; empty where ssh's configuration is to say
    std::string folder = "/";  ///< absolute, without a slash at its end unless it is "/" itself

    /// "ssh://[USER@]HOST[:PORT][/FOLDER]", as it is written again: the same for the same place.
    std::string text() const;

    bool operator==(const SshAddress&) const = default;
};

/// Whether the name of a phone is meant for an address: "ssh://…" in any case, or "HOST:…" as scp has it, which is
/// none of ours and refused by `parseSshAddress` with the right form.
bool namesSshAddress(std::string_view named);

/// "ssh://[USER@]HOST[:PORT][/FOLDER]", of which each part may be percent-encoded. A problem for what is none, or what
/// the programs that it is handed to could take for an option.
platform::Result<SshAddress> parseSshAddress(std::string_view text);

}  // namespace hosts
