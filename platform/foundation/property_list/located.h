// SPDX-License-Identifier: MIT
#pragma once

#include "platform/foundation/property_list.h"

namespace platform::property_list {

/// Where the value of a key stands in a file that is not read as a whole.
template <class Place>
struct Located {
    PropertyListLookup::Verdict verdict = PropertyListLookup::Verdict::malformed;
    Place place{};  ///< set exactly when the verdict is `found`
};

/// The same for a key of a dictionary that stands under a key of the root dictionary.
template <class Place>
struct NestedLocated {
    PropertyListNestedLookup::Verdict verdict = PropertyListNestedLookup::Verdict::malformed;
    Place place{};  ///< set exactly when the verdict is `found`
};

}  // namespace platform::property_list
