// SPDX-License-Identifier: MIT
#include "hosts/terminal/travel/xml_form.h"

#include <cstdio>

#include "platform/foundation/property_list.h"

namespace hosts::terminal {

using platform::Value;

std::optional<char32_t> characterXmlCannotSay(const Value& value) {
    if (const std::string* const text = value.string()) return platform::characterBeyondXml(*text);
    if (const platform::Array* const array = value.array()) {
        for (const Value& each : *array)
            if (const auto character = characterXmlCannotSay(each)) return character;
    }
    if (const platform::Dictionary* const dictionary = value.dictionary()) {
        for (const auto& [key, held] : *dictionary) {
            if (const auto character = platform::characterBeyondXml(key)) return character;
            if (const auto character = characterXmlCannotSay(held)) return character;
        }
    }
    return std::nullopt;
}

std::string characterName(char32_t character) {
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(character));
    return name;
}

std::optional<std::string> whatXmlCannotSay(const Value& value) {
    const auto writing = platform::writeXmlPropertyList(value);
    if (!writing) return writing.reason;
    // What can be written nests, and repeats what it holds, within bounds.
    const auto character = characterXmlCannotSay(value);
    return character ? std::optional("the character " + characterName(*character)) : std::nullopt;
}

}  // namespace hosts::terminal
