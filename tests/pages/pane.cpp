// SPDX-License-Identifier: MIT
#include "pane.h"

#include <utility>

// The pane's own entry, linked into the test program.
extern "C" platform::RegisterClasses trivel3RegisterClasses;

namespace pages_test {

Pane::Pane(kit::Shape shape, std::string systemImage) : TestPlatform(shape, std::move(systemImage)) {
    trivel3RegisterClasses(classes);
}

void Pane::setInFile(std::string_view key, platform::Value value) {
    platform::Dictionary settings = file().value_or(platform::Dictionary());
    settings.set(key, std::move(value));
    setFile(settings);
}

std::optional<platform::Value> Pane::stored(std::string_view key) const {
    const auto settings = file();
    const platform::Value* value = settings ? settings->find(key) : nullptr;
    if (!value) return std::nullopt;
    return *value;
}

platform::Value Pane::fileValue() const {
    auto settings = file();
    return settings ? platform::Value(*std::move(settings)) : platform::Value();
}

platform::PSListController& Pane::openQuietly(std::string_view className) {
    platform::PSListController& page = screen.open(className);
    log.take();
    return page;
}

kit::Event settingsWritten() {
    return kit::event::write(std::string(settingsFile));
}

kit::Event settingsNotWritten() {
    return kit::event::write(std::string(settingsFile), false);
}

kit::Event settingsChanged() {
    return kit::event::notification("com.fenwary.trivel3.preferencesChanged");
}

}  // namespace pages_test
