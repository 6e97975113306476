// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace desktop_tests {

/// Whether an XML property list has the key, and after it an element that begins like `element`.
inline bool holdsSetting(const std::string& contents, const std::string& key, const std::string& element) {
    const std::string name = "<key>" + key + "</key>";
    const std::size_t found = contents.find(name);
    if (found == std::string::npos) return false;
    const std::size_t value = contents.find_first_not_of(" \t\n", found + name.size());
    return value != std::string::npos && contents.compare(value, element.size(), element) == 0;
}

}  // namespace desktop_tests
