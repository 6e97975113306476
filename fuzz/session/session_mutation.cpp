// SPDX-License-Identifier: MIT
#include "fuzz/session/session_mutation.h"

#include <random>
#include <span>
#include <utility>

#include "platform/foundation/property_list.h"
#include "store/settings_catalogue.h"
#include "tests/property_lists/random_value.h"

namespace fuzz {
namespace {

using namespace platform;

class Mutation {
public:
    explicit Mutation(unsigned seed) : _random(seed) {}

    void change(SessionInput& input) {
        const bool isSettings = below(4) > 0;
        std::string& file = isSettings ? input.settings : input.exceptions;
        const PropertyListReading reading = readPropertyList(file);
        Dictionary entries;
        if (reading && reading.value->dictionary()) entries = *reading.value->dictionary();
        for (std::size_t count = below(3) + 1; count > 0; --count)
            changeEntry(entries, isSettings ? settingsKey() : applicationIdentifier());
        const Value changed(std::move(entries));
        PropertyListWriting writing = below(2) == 0 ? writeXmlPropertyList(changed) : writeBinaryPropertyList(changed);
        if (writing) file = *std::move(writing.bytes);
    }

private:
    std::size_t below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(_random); }

    std::string settingsKey() {
        constexpr std::span entries = trivel3::SettingsCatalogue::entries;
        const std::size_t place = below(entries.size() + 1);
        return place == entries.size() ? "CF$UID" : std::string(entries[place].key);
    }

    std::string applicationIdentifier() {
        static const std::string identifiers[] = {"com.apple.clock", "com.apple.maps", "com.example.tides",
                                                  "com.example.zither", "com.example.gone"};
        return identifiers[below(std::size(identifiers))];
    }

    void changeEntry(Dictionary& entries, const std::string& key) {
        if (below(5) == 0) {
            entries.remove(key);
        } else {
            entries.set(key, value());
        }
    }

    Value value() {
        switch (below(5)) {
            case 0:
                return below(2) == 0;
            case 1:
                return static_cast<int>(below(10)) - 1;
            case 2:
                return Dictionary{{applicationIdentifier(), below(2) == 0}, {applicationIdentifier(), otherValue()}};
            default:
                return otherValue();
        }
    }

    Value otherValue() { return RandomValues(static_cast<unsigned>(_random()), RandomValues::Kinds::all).next(); }

    std::minstd_rand _random;
};

}  // namespace

void changeEntries(SessionInput& input, unsigned seed) {
    Mutation(seed).change(input);
}

}  // namespace fuzz
