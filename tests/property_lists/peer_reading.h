// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/foundation/value.h"

namespace peers {

/// What another program's library makes of a property list.
struct PeerReading {
    /// Nothing when it does not read the bytes.
    std::optional<platform::Value> value;
    /// What it writes of what it has read; nothing where it cannot, or was not asked to.
    std::optional<std::string> xml;
    std::optional<std::string> binary;
};

/// The value with UIDs in place of the dictionaries that stand for one in an XML file. The peers leave
/// that to their callers.
platform::Value withXmlUids(const platform::Value& value);

/// Whether a value has at most so many objects, each counted as often as it is referred to.
bool unfoldsWithin(const platform::Value& value, std::size_t mostObjects);

}  // namespace peers
