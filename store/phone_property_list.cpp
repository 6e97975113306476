// SPDX-License-Identifier: MIT
#include "store/phone_property_list.h"

#include <string>

#include "platform/foundation/property_list.h"

namespace trivel3 {

std::optional<platform::Dictionary> readPhoneDictionary(const platform::FileSystem& files, std::string_view path) {
    std::string bytes;
    if (!files.readFile(path, bytes)) return std::nullopt;
    platform::PropertyListReading reading = platform::readPropertyList(bytes);
    if (!reading || !reading.value->dictionary()) return std::nullopt;
    return *reading.value->dictionary();
}

std::optional<platform::Value> readPhoneDictionaryEntry(const platform::FileSystem& files, std::string_view path,
                                                        std::string_view key) {
    std::string bytes;
    if (!files.readFile(path, bytes)) return std::nullopt;
    return platform::lookUpRootKey(bytes, key).value;
}

void writePhoneDictionary(platform::FileSystem& files, std::string_view path, const platform::Dictionary& content) {
    platform::PropertyListWriting writing = platform::writeXmlPropertyList(platform::Value(content));
    if (writing) files.writeFileAtomically(path, *writing.bytes);
}

}  // namespace trivel3
