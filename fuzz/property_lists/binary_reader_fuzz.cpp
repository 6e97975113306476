// SPDX-License-Identifier: MIT
// Any bytes at all as a binary property list.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/property_lists/reading_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!bytes.starts_with("bplist0")) return -1;
    const platform::PropertyListReading reading = platform::readPropertyList(bytes);
    fuzz::checkError(bytes, reading);
    fuzz::checkRootKeys(bytes, reading);
    if (!reading) return 0;
    fuzz::checkXmlForm(*reading.value);
    fuzz::checkBinaryForm(*reading.value);
    fuzz::checkAgainstLibplist(bytes, reading);
    return 0;
}
