// SPDX-License-Identifier: MIT
#include "platform/foundation/utf8.h"

#include "platform/foundation/property_list/unicode.h"

namespace platform {

bool isValidUtf8(std::string_view bytes) {
    return property_list::isValidUtf8(bytes);
}

Utf8Character firstUtf8Character(std::string_view text) {
    const property_list::Utf8Sequence sequence = property_list::firstSequence(text);
    if (sequence.length == 0) return {property_list::replacementCharacter, 1};
    return {sequence.character, sequence.length};
}

}  // namespace platform
