// SPDX-License-Identifier: MIT
// Any settings file and any exceptions file under a session in which every page is opened and every row
// is used.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/session/fuzzed_pane.h"
#include "fuzz/session/session_input.h"
#include "fuzz/session/session_mutation.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = fuzz::SessionInput::parse({reinterpret_cast<const char*>(data), size});
    fuzz::FuzzedPane(input).useEverything(input.firstPage);
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    constexpr unsigned changesOfEntries = 3;
    if (seed % (changesOfEntries + 1) == 0) return LLVMFuzzerMutate(data, size, maxSize);
    auto input = fuzz::SessionInput::parse({reinterpret_cast<const char*>(data), size});
    fuzz::changeEntries(input, seed);
    const std::string bytes = input.bytes();
    if (bytes.size() > maxSize) return LLVMFuzzerMutate(data, size, maxSize);
    std::copy(bytes.begin(), bytes.end(), data);
    return bytes.size();
}
