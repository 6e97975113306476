// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace platform::property_list {

/// The text of a string, key or real, and where it ends.
struct Characters {
    std::string_view text;
    const char* end = nullptr;
    const char* complaint = nullptr;  ///< what is wrong at `end`, else a null pointer
};

/// Reads text that may hold anything text can hold: references, CDATA, any characters. It ends at
/// the first `<` that begins no CDATA, or at `end`. One U+FEFF at the front is dropped. The text is a
/// view of the bytes where it can be, else of `scratch`.
Characters readCharacters(const char* begin, const char* end, std::string& scratch);

}  // namespace platform::property_list
