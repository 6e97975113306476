// SPDX-License-Identifier: MIT
#include "store/phone_property_list.h"

#include <string>

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
    const auto content = readPhoneDictionary(files, path);
    const platform::Value* value = content ? content->find(key) : nullptr;
    return value ? std::optional(*value) : std::nullopt;
}

void writePhoneDictionary(platform::FileSystem& files, std::string_view path, const platform::Dictionary& content) {
    platform::PropertyListWriting writing = platform::writeXmlPropertyList(platform::Value(content));
    if (writing) files.writeFileAtomically(path, *writing.bytes);
}

}  // namespace trivel3
