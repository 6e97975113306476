// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "platform/foundation/property_list/binary_layout.h"
#include "platform/foundation/property_list/located.h"

namespace platform::property_list {

/// Finds values in a validated binary property list.
class BinaryLookup {
public:
    /// The number of an object.
    using Place = std::size_t;

    explicit BinaryLookup(const BinaryLayout& layout) : _layout(layout) {}

    /// The value of a key of the root dictionary.
    Located<Place> locateInRoot(std::string_view key) const { return locateIn(_layout.root(), key); }

    /// The value of a key of the dictionary that stands under a key of the root dictionary.
    NestedLocated<Place> locateNested(std::string_view outerKey, std::string_view innerKey) const;

    /// The root dictionary with these of its keys and no others. Nothing when the root is no dictionary.
    std::optional<Dictionary> readInRoot(std::span<const std::string_view> keys) const;

    Value value(Place place) const;

private:
    Located<Place> locateIn(Place dictionary, std::string_view key) const;

    const BinaryLayout& _layout;
};

}  // namespace platform::property_list
