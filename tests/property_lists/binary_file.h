// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Binary property lists laid out by hand, so that tests can say things that no writer would.
struct BinaryFile {
    std::vector<std::string> objects = {};  ///< in their encoded form
    std::vector<std::size_t> offsets = {};  ///< where each object lies; empty for one behind the other
    std::size_t offsetSize = 2;
    std::size_t referenceSize = 1;
    std::uint64_t root = 0;
    std::string gap = {};  ///< between the objects and the offset table
    std::string header = "bplist00";

    std::string bytes() const;
};

/// A file whose root is one object.
std::string binaryFileOf(std::string object);

/// `{ "k" = object; }`
std::string binaryDictionaryOf(std::string object);

/// The big-endian form of a number.
std::string bigEndian(std::uint64_t number, std::size_t size);

/// Bytes written in hexadecimal; blanks do not matter.
std::string hex(std::string_view digits);
