// SPDX-License-Identifier: MIT
#include "benchmarks/sample_settings.h"

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

platform::Dictionary settingsWithTicks(std::size_t ticks) {
    platform::Dictionary settings;
    for (const auto& entry : trivel3::SettingsCatalogue::entries())
        settings.set(entry.key, entry.defaultValue());
    std::vector<platform::Dictionary::Entry> applications;
    for (std::size_t i = 0; i < ticks; ++i) {
        std::string number = std::to_string(i);
        applications.push_back({"com.example.app" + std::string(5 - number.size(), '0') + number, i % 2 == 0});
    }
    settings.set("CloseAllAppsExceptions",
                 platform::Dictionary(std::move(applications), platform::Dictionary::Duplicates::lastWins));
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
