// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/value_text.h"

#include <array>
#include <charconv>

#include "hosts/terminal/render/printable.h"
#include "platform/foundation/property_list.h"

namespace hosts::terminal {
namespace {

std::string counted(std::size_t count, const char* one, const char* many) {
    return "(" + std::to_string(count) + " " + (count == 1 ? one : many) + ")";
}

// The shortest text that gives the same number again.
std::string realText(double number) {
    std::array<char, 32> text;
    const auto written = std::to_chars(text.data(), text.data() + text.size(), number);
    return std::string(text.data(), written.ptr);
}

// The text between the tags of a scalar's XML form: how the platform itself spells it.
std::string xmlSpelling(const platform::Value& value) {
    auto xml = platform::writeXmlPropertyList(value);
    if (!xml) return "(unknown)";
    const auto open = xml.bytes->find('>', xml.bytes->find("<plist"));
    const auto start = xml.bytes->find('>', open + 1);
    const auto end = xml.bytes->find("</", open + 1);
    if (start == std::string::npos || end == std::string::npos || end < start) return "(unknown)";
    return xml.bytes->substr(start + 1, end - start - 1);
}

}  // namespace

std::string integerText(const platform::Integer& number) {
    return number.isNegative() ? std::to_string(static_cast<std::int64_t>(number.bits)) : std::to_string(number.bits);
}

std::optional<std::string> valueText(const platform::Value& value) {
    if (auto* flag = value.boolean()) return *flag ? "true" : "false";
    if (auto* number = value.integer()) return integerText(*number);
    if (auto* text = value.string()) return *text;
    return platform::writeXmlPropertyList(value).bytes;
}

std::string valueSummary(const std::optional<platform::Value>& value) {
    constexpr std::size_t longest = 60;
    if (!value) return "(nothing)";
    if (value->isNull()) return "(null)";
    if (auto* number = value->real()) return realText(*number);
    if (value->date()) return xmlSpelling(*value);
    if (auto* data = value->data()) return counted(data->size(), "byte", "bytes");
    if (auto* array = value->array()) return counted(array->size(), "element", "elements");
    if (auto* set = value->set()) return counted(set->members.size(), "member", "members");
    if (auto* dictionary = value->dictionary()) return counted(dictionary->size(), "entry", "entries");
    if (auto* uid = value->uid()) return "(uid " + std::to_string(uid->number) + ")";
    return shortened(printable(valueText(*value).value_or("")), longest);
}

}  // namespace hosts::terminal
