// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list/xml_reader.h"

#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/base64.h"
#include "platform/foundation/property_list/xml_scanner.h"

namespace platform::property_list {

namespace {

/// Makes the values that a property list says.
class Builder {
public:
    using Node = Value;

    class Items {
    public:
        void add(Value&& item) { _items.push_back(std::move(item)); }
        Value finish() { return Value(std::move(_items)); }

    private:
        Array _items;
    };

    class Entries {
    public:
        void key(std::string_view text, const char*) {
            if (_entries.empty()) _entries.reserve(fewEntries);
            _entries.push_back({std::string(text), Value()});
        }
        void add(Value&& value) { _entries.back().value = std::move(value); }

        Value finish() {
            Dictionary dictionary(std::move(_entries), Dictionary::Duplicates::lastWins);
            const Value* number = dictionary.size() == 1 ? dictionary.find(uidKey) : nullptr;
            if (number && (number->integer() || number->real())) {
                return Uid{static_cast<std::uint32_t>(integerValue(*number))};
            }
            return Value(std::move(dictionary));
        }

    private:
        static constexpr std::size_t fewEntries = 8;
        std::vector<Dictionary::Entry> _entries;
    };

    Items items() { return {}; }
    Entries entries(std::size_t) { return {}; }

    Value boolean(bool flag) { return flag; }
    Value integer(Integer number) { return number; }
    Value real(double number) { return number; }
    Value date(Date date) { return date; }
    Value string(std::string_view text) { return text; }
    Value data(std::string_view base64) { return decodeBase64(base64); }
};

}  // namespace

std::optional<Value> readXml(std::string_view text, PropertyListError& fault) {
    Builder builder;
    XmlScanner<Builder> scanner(text, builder);
    std::optional<Value> root = scanner.document();
    if (!root) fault = scanner.fault();
    return root;
}

std::optional<Value> readXmlObject(std::string_view text) {
    Builder builder;
    return XmlScanner<Builder>(text, builder).object();
}

}  // namespace platform::property_list
