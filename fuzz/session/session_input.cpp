// SPDX-License-Identifier: MIT
#include "fuzz/session/session_input.h"

#include <algorithm>

namespace fuzz {

namespace {

constexpr std::size_t headerSize = 4;

}  // namespace

SessionInput SessionInput::parse(std::string_view bytes) {
    std::string header(bytes.substr(0, headerSize));
    header.resize(headerSize);
    const auto number = [&](std::size_t index) { return static_cast<unsigned char>(header[index]); };
    const std::string_view files = bytes.substr(std::min(headerSize, bytes.size()));
    const std::size_t length = std::min(number(2) + std::size_t{256} * number(3), files.size());
    return {number(0), number(1), std::string(files.substr(0, length)), std::string(files.substr(length))};
}

std::string SessionInput::bytes() const {
    const std::size_t length = std::min<std::size_t>(settings.size(), 0xFFFF);
    std::string bytes{static_cast<char>(device), static_cast<char>(firstPage), static_cast<char>(length & 0xFF),
                      static_cast<char>(length >> 8)};
    return bytes.append(settings, 0, length).append(exceptions);
}

}  // namespace fuzz
