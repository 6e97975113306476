// SPDX-License-Identifier: MIT
// Any bytes at all as a strings file: what is read of them is text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "hosts/app_list/strings_file.h"
#include "platform/foundation/utf8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto strings = hosts::readStringsFile({reinterpret_cast<const char*>(data), size});
    if (!strings) return 0;
    for (const auto& entry : *strings) {
        if (!platform::isValidUtf8(entry.key)) std::abort();
        if (entry.value.string() && !platform::isValidUtf8(*entry.value.string())) std::abort();
    }
    return 0;
}
