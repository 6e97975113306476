// SPDX-License-Identifier: MIT
#include "hosts/app_list/one_line_name.h"

#include <cstddef>
#include <cstdint>

namespace hosts {
namespace {

bool continuesCharacter(char byte) {
    return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80;
}

std::string_view cut(std::string_view name) {
    if (name.size() <= longestName) return name;
    std::size_t end = longestName;
    while (end > 0 && continuesCharacter(name[end]))
        --end;
    return name.substr(0, end);
}

// The length in bytes of the control character or line break that the text begins with; 0 when it
// begins with anything else. U+0080 to U+009F are controls too; U+2028 and U+2029 break lines.
std::size_t leadingControlLength(std::string_view text) {
    const auto first = static_cast<std::uint8_t>(text[0]);
    if (first < 0x20 || first == 0x7F) return 1;
    if (first == 0xC2 && text.size() > 1 && static_cast<std::uint8_t>(text[1]) < 0xA0) return 2;
    if (text.starts_with("\u2028") || text.starts_with("\u2029")) return 3;
    return 0;
}

}  // namespace

std::string oneLineName(std::string_view name) {
    std::string line;
    std::string_view rest = cut(name);
    while (!rest.empty()) {
        const std::size_t control = leadingControlLength(rest);
        line += control > 0 ? ' ' : rest[0];
        rest.remove_prefix(control > 0 ? control : 1);
    }
    return line.find_first_not_of(' ') == line.npos ? std::string() : line;
}

}  // namespace hosts
