// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/foundation/property_list/binary_layout.h"
#include "platform/foundation/property_list/binary_reader.h"
#include "platform/foundation/property_list/xml_encoding.h"
#include "platform/foundation/property_list/xml_reader.h"

namespace platform {

namespace {

using property_list::XmlText;

constexpr std::size_t unbounded = SIZE_MAX;

struct Line {
    std::size_t number = 1;
    std::size_t begin = 0;
};

/// The line around a place in the text. Lines end at LF, CR or CR LF.
Line lineAt(std::string_view text, std::size_t place) {
    Line line;
    for (std::size_t index = 0; index < place; ++index) {
        const bool endsLine = text[index] == '\n' || (text[index] == '\r' && !text.substr(index + 1).starts_with('\n'));
        if (!endsLine) continue;
        ++line.number;
        line.begin = index + 1;
    }
    return line;
}

/// Lines are told apart in the decoded text, columns counted in the file.
PropertyListError xmlError(PropertyListError fault, const XmlText& text) {
    const Line line = lineAt(text.utf8(), fault.offset);
    const std::size_t offset = text.fileOffset(fault.offset);
    return {std::move(fault.reason), offset, line.number, offset - text.fileOffset(line.begin) + 1};
}

/// For files that could not be decoded; exact where a character takes one byte.
PropertyListError undecodedError(PropertyListError fault, std::string_view bytes) {
    const Line line = lineAt(bytes, fault.offset);
    return {std::move(fault.reason), fault.offset, line.number, fault.offset - line.begin + 1};
}

/// No fewer than the text's values, keys counted.
std::size_t startTagsIn(std::string_view text) {
    std::size_t tags = 0;
    for (std::size_t place = text.find('<'); place != std::string_view::npos; place = text.find('<', place + 1)) {
        if (!text.substr(place + 1).starts_with('/')) ++tags;
    }
    return tags;
}

PropertyListReading readXml(std::string_view bytes, std::size_t mostValues) {
    PropertyListReading reading;
    PropertyListError fault;
    const std::optional<XmlText> text = XmlText::decode(bytes, fault);
    if (!text) {
        reading.error = undecodedError(std::move(fault), bytes);
        return reading;
    }
    if (mostValues != unbounded && startTagsIn(text->utf8()) > mostValues) {
        reading.error = xmlError({"too many values"}, *text);
        return reading;
    }
    reading.value = property_list::readXml(text->utf8(), fault);
    if (!reading.value) reading.error = xmlError(std::move(fault), *text);
    return reading;
}

PropertyListReading readBinary(std::string_view bytes, const property_list::BinaryBounds& bounds) {
    PropertyListReading reading;
    reading.format = PropertyListFormat::binary;
    reading.value = property_list::readBinary(bytes, reading.error, bounds);
    return reading;
}

}  // namespace

PropertyListReading readPropertyList(std::string_view bytes) {
    return property_list::isBinary(bytes) ? readBinary(bytes, {}) : readXml(bytes, unbounded);
}

PropertyListReading readPropertyListOfStrangers(std::string_view bytes, std::size_t mostValues) {
    if (property_list::isBinary(bytes))
        return readBinary(bytes, {.values = mostValues, .overlap = 1, .keyRepetition = 1});
    return readXml(bytes, mostValues);
}

std::optional<Dictionary> readRootKeys(std::string_view bytes, std::span<const std::string_view> keys) {
    if (property_list::isBinary(bytes)) return property_list::readBinaryRootKeys(bytes, keys);
    PropertyListError unused;
    const std::optional<XmlText> text = XmlText::decode(bytes, unused);
    return text ? property_list::readXmlRootKeys(text->utf8(), keys) : std::nullopt;
}

}  // namespace platform
