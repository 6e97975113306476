// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "platform/foundation/property_list/binary_layout.h"

namespace platform::property_list {

/// Checks every object that the root leads to, each once however often it is referred to. When it
/// returns true, the following holds for these objects, and whoever reads them relies on it:
///  - `BinaryLayout::find` succeeds, and every reference in them is in range;
///  - containers never hold themselves, and those that hold something nest at most 512 deep;
///  - no container is a key;
///  - dates are finite, UIDs fit 32 bits, UTF-16 strings are not empty;
///  - what they hold all together is in proportion to the size of the file, although objects may
///    overlap and dictionaries share their keys.
bool validateBinary(const BinaryLayout& layout, PropertyListError& fault);

/// The layout of a binary property list in which everything is in order; else the fault says what
/// is not.
std::optional<BinaryLayout> readValidLayout(std::string_view bytes, PropertyListError& fault);

}  // namespace platform::property_list
