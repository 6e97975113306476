// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "hosts/phones/place.h"
#include "platform/foundation/result.h"

namespace hosts {

/// At most so many bytes of a phone's files are kept; the oldest go first.
constexpr std::uintmax_t mostKeptBytes = std::uintmax_t{64} << 20;

/// Keeps what a file of a phone held, durably, in `kept` of the user's state folder, for the user's eyes only: a file
/// whose name tells the phone, the file and the time. `phone` is the phone's folder, by its one path on this machine.
/// Gives the path of what is kept.
platform::Result<std::string> keepFile(const std::string& phone, std::string_view path, std::string_view contents);

/// A name that nothing in the place's folder has, to move the place's file to: its own, with the time. Empty, with
/// errno set, when there is none.
std::string freeNameBeside(FileCalls& calls, const Place& place);

}  // namespace hosts
