// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "platform/foundation/value.h"

namespace trivel3 {

/// Every settings key that has a default, in the order in which the add-on knows them too. The kind
/// is part of the contract with the add-on: a boolean true is not the integer 1.
class SettingsCatalogue {
public:
    enum class Kind { boolean, integer, dictionary };

    struct Entry {
        std::string_view key;
        Kind kind;
        /// A boolean's or an integer's default; 0 for a dictionary, whose default is the empty one.
        int defaultNumber;

        platform::Value defaultValue() const;
    };

    static std::span<const Entry> entries();

    /// A newly made default; nothing for a key outside the catalogue. Keys are case-sensitive.
    static std::optional<platform::Value> defaultForKey(std::string_view key);
};

}  // namespace trivel3
