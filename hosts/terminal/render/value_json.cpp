// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/value_json.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {
namespace {

using nlohmann::json;
using platform::Value;

std::string base64(const platform::Data& data) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t start = 0; start < data.size(); start += 3) {
        const std::size_t count = std::min<std::size_t>(3, data.size() - start);
        unsigned group = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            group = group << 8 | (i < count ? std::to_integer<unsigned>(data[start + i]) : 0);
        }
        for (std::size_t i = 0; i < 4; ++i)
            text += i <= count ? digits[group >> (18 - 6 * i) & 63] : '=';
    }
    return text;
}

// Turns a value into JSON; notes the first thing that JSON has no kind for. A binary property list
// can refer to one container many times, and JSON would unfold it each time: hence the bound.
class Converter {
public:
    json convert(const Value& value) {
        if (_left == 0) return note("more values than we are ready to write", "(more)");
        --_left;
        return std::visit([this](const auto& content) { return convertContent(content); }, value.storage());
    }

    const std::string& loss() const { return _loss; }

private:
    static constexpr std::size_t mostValues = 4'000'000;

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
    json convertContent(const std::shared_ptr<const std::string>& text) { return *text; }
    json convertContent(const platform::Date& date) { return note("a date", valueSummary(Value(date))); }
    json convertContent(const platform::Uid& uid) { return note("a UID", {{"CF$UID", uid.number}}); }
    json convertContent(const std::shared_ptr<const platform::Data>& data) { return note("data", base64(*data)); }
    json convertContent(const std::shared_ptr<const platform::Array>& array) { return convertAll(*array); }
    json convertContent(const std::shared_ptr<const platform::Set>& set) {
        return note("a set", convertAll(set->members));
    }
    json convertContent(const std::shared_ptr<const platform::Dictionary>& dictionary) {
        json object = json::object();
        for (const auto& [key, value] : *dictionary) {
            object[key] = convert(value);
            if (_left == 0) break;
        }
        return dictionary->oddEntries().empty() ? object : note("a key that is no string", object);
    }
    json convertAll(const std::vector<Value>& values) {
        json array = json::array();
        for (const Value& value : values) {
            array.push_back(convert(value));
            if (_left == 0) break;
        }
        return array;
    }

    std::size_t _left = mostValues;
    std::string _loss;
};

}  // namespace

json jsonOf(const std::optional<Value>& value) {
    return value ? Converter().convert(*value) : json(nullptr);
}

std::optional<json> faithfulJsonOf(const Value& value, std::string& error) {
    Converter converter;
    json converted = converter.convert(value);
    if (converter.loss().empty()) return converted;
    error = "holds " + converter.loss() + ", which JSON cannot say";
    return std::nullopt;
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
    return json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace hosts::terminal
