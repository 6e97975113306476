// SPDX-License-Identifier: MIT
#include "benchmarks/sample_settings.h"

#include "benchmarks/sample_applications.h"
#include "platform/foundation/property_list.h"
#include "store/settings_catalogue.h"

namespace benchmarks {
namespace {

SampleSettings encoded(std::string name, std::size_t ticks) {
    const platform::Value content(settingsWithTicks(ticks));
    return {std::move(name), *platform::writeXmlPropertyList(content).bytes,
            *platform::writeBinaryPropertyList(content).bytes};
}

}  // namespace

platform::Dictionary sampleTicks(std::size_t count) {
    std::vector<platform::Dictionary::Entry> applications;
    for (std::size_t number = 0; number < count; ++number)
        applications.push_back({sampleIdentifier(number), number % 2 == 0});
    return platform::Dictionary(std::move(applications), platform::Dictionary::Duplicates::lastWins);
}

platform::Dictionary settingsWithTicks(std::size_t ticks) {
    platform::Dictionary settings;
    for (const auto& entry : trivel3::SettingsCatalogue::entries) {
        if (auto value = entry.defaultValue()) settings.set(entry.key, *std::move(value));
    }
    settings.set("CloseAllAppsExceptions", sampleTicks(ticks));
    return settings;
}

const SampleSettings& smallSettings() {
    static const SampleSettings settings = encoded("2 KB", 20);
    return settings;
}

const SampleSettings& largeSettings() {
    static const SampleSettings settings = encoded("600 KB", 10'000);
    return settings;
}

}  // namespace benchmarks
