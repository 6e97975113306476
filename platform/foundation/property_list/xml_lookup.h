// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "platform/foundation/property_list/located.h"

namespace platform::property_list {

/// Finds values in XML that is UTF-8.
class XmlLookup {
public:
    /// The text from right before an object on.
    using Place = std::string_view;

    explicit XmlLookup(std::string_view text) : _text(text) {}

    /// The value of a key of the root dictionary.
    Located<Place> locateInRoot(std::string_view key) const;

    /// The value of a key of the dictionary that stands under a key of the root dictionary.
    NestedLocated<Place> locateNested(std::string_view outerKey, std::string_view innerKey) const;

    /// The root dictionary with these of its keys and no others. Nothing when the file is malformed or
    /// the root no dictionary.
    std::optional<Dictionary> readInRoot(std::span<const std::string_view> keys) const;

    Value value(Place place) const;

private:
    std::string_view _text;
};

}  // namespace platform::property_list
