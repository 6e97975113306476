// SPDX-License-Identifier: MIT
#include "tests/property_lists/binary_file.h"

std::string bigEndian(std::uint64_t number, std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t index = size; index > 0 && number > 0; --index, number >>= 8) {
        bytes[index - 1] = static_cast<char>(number & 0xFF);
    }
    return bytes;
}

std::string hex(std::string_view digits) {
    std::string bytes;
    std::string pair;
    for (const char digit : digits) {
        if (digit == ' ') continue;
        pair += digit;
        if (pair.size() < 2) continue;
        bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
        pair.clear();
    }
    return bytes;
}

std::string BinaryFile::bytes() const {
    std::string file = header;
    std::string table;
    for (std::size_t number = 0; number < objects.size(); ++number) {
        if (offsets.empty()) table += bigEndian(file.size(), offsetSize);
        file += objects[number];
    }
    for (const std::size_t offset : offsets)
        table += bigEndian(offset, offsetSize);
    const std::size_t count = table.size() / offsetSize;
    file += gap;
    const std::size_t tableOffset = file.size();
    file += table + std::string(6, '\0') + bigEndian(offsetSize, 1) + bigEndian(referenceSize, 1);
    return file + bigEndian(count, 8) + bigEndian(root, 8) + bigEndian(tableOffset, 8);
}

std::string binaryFileOf(std::string object) {
    return BinaryFile{.objects = {std::move(object)}}.bytes();
}

std::string binaryDictionaryOf(std::string object) {
    return BinaryFile{.objects = {hex("D1 01 02"), hex("51 6B"), std::move(object)}}.bytes();
}
