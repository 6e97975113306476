// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/foundation/property_list.h"

namespace platform::property_list {

/// What a file may make of itself in memory.
struct BinaryBounds {
    std::size_t values = SIZE_MAX;  ///< in containers, keys counted; and objects of the file
    /// Objects of a well-meant file do not overlap, so all of them together are no longer than the file.
    /// Some overlap is allowed, but not so much that reading takes more than its share of memory.
    std::size_t overlap = 4;
    /// Each dictionary has its own copies of its keys, which may all share one object of the file. A
    /// reference takes a byte at least, and keys are rarely longer than this.
    std::size_t keyRepetition = 64;
};

/// Makes each object once: where objects are shared, so are the values. Nothing when the bytes are no
/// binary property list; then `error` says why, and where.
std::optional<Value> readBinary(std::string_view bytes, PropertyListError& error, const BinaryBounds& bounds = {});

/// The root dictionary with these of its keys and no others. Nothing when the bytes are no binary property
/// list, or the root is no dictionary.
std::optional<Dictionary> readBinaryRootKeys(std::string_view bytes, std::span<const std::string_view> keys);

}  // namespace platform::property_list
