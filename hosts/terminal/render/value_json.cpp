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

// Turns a value into JSON; notes the first thing that JSON has no kind for, and leaves off once there is too much.
class Converter {
public:
    explicit Converter(platform::RepetitionAccount& account) : _account(account) {}

    json convert(const Value& value) {
        count(_account.value());
        return std::visit([this](const auto& content) { return convertContent(content); }, value.storage());
    }

    const std::string& loss() const { return _loss; }
    bool isTooMuch() const { return _isTooMuch; }

private:
    void count(bool isWithinLimits) { _isTooMuch = _isTooMuch || !isWithinLimits; }

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
        count(_account.content(text));
        return _isTooMuch ? json() : json(*text);
    }
    json convertContent(const platform::Date& date) { return note("a date", valueSummary(Value(date))); }
    json convertContent(const platform::Uid& uid) { return note("a UID", {{"CF$UID", uid.number}}); }
    json convertContent(const std::shared_ptr<const platform::Data>& data) {
        count(_account.content(data));
        return note("data", _isTooMuch ? json() : json(base64(*data)));
    }
    json convertContent(const std::shared_ptr<const platform::Array>& array) {
        _account.enter(array);
        json converted = convertAll(*array);
        _account.leave();
        return converted;
    }
    json convertContent(const std::shared_ptr<const platform::Set>& set) {
        _account.enter(set);
        json converted = convertAll(set->members);
        _account.leave();
        return note("a set", std::move(converted));
    }
    json convertContent(const std::shared_ptr<const platform::Dictionary>& dictionary) {
        _account.enter(dictionary);
        json object = json::object();
        for (const auto& [key, value] : *dictionary) {
            count(_account.key(key));
            if (_isTooMuch) break;
            object.emplace(key, convert(value));
        }
        _account.leave();
        return dictionary->oddEntries().empty() ? object : note("a key that is no string", std::move(object));
    }
    json convertAll(const std::vector<Value>& values) {
        json::array_t array;
        array.reserve(_isTooMuch ? 0 : values.size());
        for (const Value& value : values) {
            if (_isTooMuch) break;
            array.push_back(convert(value));
        }
        return json(std::move(array));
    }

    platform::RepetitionAccount& _account;
    bool _isTooMuch = false;
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

json AnswerValues::jsonOf(const std::optional<Value>& value) {
    _isExact = true;
    _isBySize = false;
    if (!value) return nullptr;
    _kept.push_back(*value);
    Converter converter(_account);
    json converted = converter.convert(*value);
    _isBySize = converter.isTooMuch();
    _isExact = converter.loss().empty() && !_isBySize;
    return converter.isTooMuch() ? json(valueSummary(value)) : converted;
}

platform::Result<json> faithfulJsonOf(const Value& value) {
    platform::RepetitionAccount account({.values = 4'000'000, .bytes = std::size_t{256} << 20, .shortText = 0});
    Converter converter(account);
    json converted = converter.convert(value);
    if (converter.isTooMuch()) {
        return platform::Problem{.reason = "more than 4 million values or 256 MB of text that repeat others"};
    }
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
