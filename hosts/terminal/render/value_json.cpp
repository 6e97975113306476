// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/value_json.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "hosts/session/printable.h"
#include "hosts/terminal/render/value_text.h"
#include "platform/foundation/base64.h"
#include "platform/foundation/utf8.h"

namespace hosts::terminal {
namespace {

using nlohmann::json;
using platform::Value;

std::string base64(const platform::Data& data) {
    std::string text;
    platform::appendBase64(text, data);
    return text;
}

// Turns a value into JSON; notes the first thing that JSON has no kind for. A binary property list
// can refer to one container or text many times, and JSON unfolds it each time: hence the bounds.
class Converter {
public:
    json convert(const Value& value) {
        --_valuesLeft;
        return std::visit([this](const auto& content) { return convertContent(content); }, value.storage());
    }

    const std::string& loss() const { return _loss; }

private:
    static constexpr const char* tooMuch = "more than 4 million values or 256 MB of text";

    bool isFull() const { return _valuesLeft == 0 || _bytesLeft == 0; }

    void spend(std::size_t bytes) { _bytesLeft -= std::min(bytes, _bytesLeft); }

    json note(const char* what, json stand) {
        if (_loss.empty()) _loss = what;
        return stand;
    }

    json convertContent(platform::Null) { return nullptr; }
    json convertContent(bool flag) { return flag; }
    json convertContent(const platform::Integer& number) {
        if (number.aboveSigned) return number.bits;
        return static_cast<std::int64_t>(number.bits);
    }
    json convertContent(double number) {
        if (std::isfinite(number)) return number;
        return note("a real number that is not finite", std::isnan(number) ? "nan"
                                                        : number > 0       ? "+infinity"
                                                                           : "-infinity");
    }
    json convertContent(const std::shared_ptr<const std::string>& text) {
        spend(text->size());
        return *text;
    }
    json convertContent(const platform::Date& date) { return note("a date", valueSummary(Value(date))); }
    json convertContent(const platform::Uid& uid) { return note("a UID", {{"CF$UID", uid.number}}); }
    json convertContent(const std::shared_ptr<const platform::Data>& data) {
        spend(data->size());
        return note("data", base64(*data));
    }
    json convertContent(const std::shared_ptr<const platform::Array>& array) { return convertAll(*array); }
    json convertContent(const std::shared_ptr<const platform::Set>& set) {
        return note("a set", convertAll(set->members));
    }
    json convertContent(const std::shared_ptr<const platform::Dictionary>& dictionary) {
        json object = json::object();
        for (const auto& [key, value] : *dictionary) {
            if (isFull()) return note(tooMuch, std::move(object));
            spend(key.size());
            object[key] = convert(value);
        }
        return dictionary->oddEntries().empty() ? object : note("a key that is no string", object);
    }
    json convertAll(const std::vector<Value>& values) {
        json array = json::array();
        for (const Value& value : values) {
            if (isFull()) return note(tooMuch, std::move(array));
            array.push_back(convert(value));
        }
        return array;
    }

    std::size_t _valuesLeft = 4'000'000;
    std::size_t _bytesLeft = std::size_t{256} << 20;
    std::string _loss;
};

std::string escape(char32_t code) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[code >> shift & 15];
    return text;
}

// JSON itself escapes the controls up to U+001F alone. Others begin with one of these bytes.
std::string withControlsEscaped(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    while (true) {
        const std::size_t place = std::min(text.find_first_of("\x7F\xC2\xE2"), text.size());
        escaped += text.substr(0, place);
        text.remove_prefix(place);
        if (text.empty()) return escaped;
        const platform::Utf8Character character = platform::firstUtf8Character(text);
        escaped += isSteering(character.code) ? escape(character.code) : text.substr(0, character.length);
        text.remove_prefix(character.length);
    }
}

}  // namespace

json jsonOf(const std::optional<Value>& value) {
    return value ? Converter().convert(*value) : json(nullptr);
}

platform::Result<json> faithfulJsonOf(const Value& value) {
    Converter converter;
    json converted = converter.convert(value);
    if (!converter.loss().empty()) return platform::Problem{.reason = converter.loss()};
    return converted;
}

json kindOf(const std::optional<Value>& value) {
    if (!value || value->isNull()) return nullptr;
    if (value->boolean()) return "boolean";
    if (value->integer()) return "integer";
    if (value->real()) return "real";
    if (value->string()) return "string";
    if (value->date()) return "date";
    if (value->data()) return "data";
    if (value->dictionary() || value->uid()) return "dictionary";
    return "array";
}

std::string jsonLine(const json& json) {
    return withControlsEscaped(json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace hosts::terminal
