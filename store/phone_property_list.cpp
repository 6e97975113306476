// SPDX-License-Identifier: MIT
#include "store/phone_property_list.h"

#include <cstddef>
#include <string>
#include <utility>

namespace trivel3 {
namespace {

/// Room for the bytes of a file while it is read. It is kept from one reading to the next: a file is
/// read for each row that is shown, and for a large one taking the room anew costs half as much as
/// looking a key up in it. Nothing in it outlives the reading.
class ReadingRoom {
public:
    ReadingRoom() : _bytes(std::exchange(kept(), std::string())) {}
    ReadingRoom(const ReadingRoom&) = delete;
    ReadingRoom& operator=(const ReadingRoom&) = delete;
    ~ReadingRoom() {
        if (_bytes.capacity() <= mostKept) kept() = std::move(_bytes);
    }

    std::string& bytes() { return _bytes; }

private:
    static constexpr std::size_t mostKept = std::size_t{1} << 20;

    static std::string& kept() {
        thread_local std::string room;
        return room;
    }

    std::string _bytes;
};

}  // namespace

std::optional<platform::Dictionary> readPhoneDictionary(const platform::FileSystem& files, std::string_view path) {
    ReadingRoom room;
    if (!files.readFile(path, room.bytes())) return std::nullopt;
    platform::PropertyListReading reading = platform::readPropertyList(room.bytes());
    if (!reading || !reading.value->dictionary()) return std::nullopt;
    return *reading.value->dictionary();
}

std::optional<platform::Value> readPhoneDictionaryEntry(const platform::FileSystem& files, std::string_view path,
                                                        std::string_view key) {
    ReadingRoom room;
    if (!files.readFile(path, room.bytes())) return std::nullopt;
    return platform::lookUpRootKey(room.bytes(), key).value;
}

platform::PropertyListNestedLookup lookUpPhoneDictionaryEntry(const platform::FileSystem& files, std::string_view path,
                                                              std::string_view outerKey, std::string_view innerKey) {
    ReadingRoom room;
    if (!files.readFile(path, room.bytes())) return {};
    return platform::lookUpNestedKey(room.bytes(), outerKey, innerKey);
}

void writePhoneDictionary(platform::FileSystem& files, std::string_view path, const platform::Dictionary& content) {
    platform::PropertyListWriting writing = platform::writeXmlPropertyList(platform::Value(content));
    if (writing) files.writeFileAtomically(path, *writing.bytes);
}

}  // namespace trivel3
