// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/foundation/property_list.h"
#include "tests/property_lists/peer_reading.h"

namespace peers {

/// Debian 12's libplist has no null object, Debian 13's has.
#ifdef TRIVEL3_LIBPLIST_HAS_NULL
inline constexpr bool libplistHasNull = true;
#else
inline constexpr bool libplistHasNull = false;
#endif

/// Reads with libplist. It reads each object anew wherever it is referred to, so that a small file
/// can take any time and memory: see `unfoldsWithin`. Its own safety on hostile bytes is not ours to judge,
/// so it is given only what our reader has accepted.
/// What libplist leaves to its caller is done by the rules of the format: which of equal keys counts,
/// and which dictionary of an XML file is a UID.
PeerReading readByLibplist(std::string_view bytes, platform::PropertyListFormat format);

/// As `readByLibplist`, and also what libplist then writes.
PeerReading readAndWriteByLibplist(std::string_view bytes, platform::PropertyListFormat format);

}  // namespace peers
