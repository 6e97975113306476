// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/foundation/property_list/binary_layout.h"
#include "platform/foundation/value.h"

namespace platform::property_list {

/// The UTF-8 of a string object.
std::string binaryString(const BinaryLayout& layout, const BinaryObject& object);

/// Makes values of the objects of a validated binary property list, each object once: where objects
/// are shared, so are the values.
class BinaryReader {
public:
    explicit BinaryReader(const BinaryLayout& layout) : _layout(layout) {}

    Value value(std::size_t number);

private:
    Value scalar(const BinaryObject& object) const;
    Value shared(std::size_t number, const BinaryObject& object);
    Array members(const BinaryObject& object);
    Value dictionary(const BinaryObject& object);

    const BinaryLayout& _layout;
    /// What has been made of strings, data and containers, by number; null where nothing has yet.
    std::vector<Value> _made;
};

}  // namespace platform::property_list
