// SPDX-License-Identifier: MIT
#include "pane.h"

#include <utility>

namespace pages_test {

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

}  // namespace pages_test
