// SPDX-License-Identifier: MIT
#include "hosts/session/defaults.h"

#include <algorithm>
#include <utility>

#include "hosts/session/page_snapshot.h"
#include "platform/list/list_controller.h"

namespace hosts {

using platform::PSSpecifier;

Defaults::Defaults(std::shared_ptr<platform::PreferenceAccess> access) : _access(std::move(access)) {
    for (auto& setting : _access->settings()) {
        if (setting.defaultValue) _defaults.emplace(std::move(setting.key), *std::move(setting.defaultValue));
    }
}

const platform::Value* Defaults::defaultOf(std::string_view key) const {
    const auto found = _defaults.find(key);
    return found == _defaults.end() ? nullptr : &found->second;
}

bool Defaults::isChanged(std::string_view key) const {
    const platform::Value* const own = defaultOf(key);
    if (!own) return false;
    const auto stored = _access->storedValueForKey(key);
    return stored && !(*stored == *own);
}

std::optional<std::string> Defaults::settingOf(const PSSpecifier& row) const {
    auto key = rowKind(row) == RowLook::Kind::switchRow ? row.identifier() : choiceKeyOf(row);
    return key && defaultOf(*key) ? std::move(key) : std::nullopt;
}

bool Defaults::isChanged(const PSSpecifier& row, bool isChecked) const {
    const auto key = settingOf(row);
    if (!key || !isChanged(*key)) return false;
    if (rowKind(row) == RowLook::Kind::switchRow) return true;
    const std::int64_t value = choiceValueOf(row).value_or(0);
    const std::int64_t changed =
        platform::integerValue(_access->storedValueForKey(*key)) ^ platform::integerValue(*defaultOf(*key));
    const bool isFlag = row.propertyForKey(platform::PSPropertyKey::isFlag) != nullptr;
    // Without a bit, the row stands for all of them being off; without a changed one, the kind is another.
    return isFlag && value != 0 && changed != 0 ? (changed & value) != 0 : isChecked;
}

std::vector<std::string> Defaults::settingsOf(platform::UIViewController& page) const {
    std::vector<std::string> settings;
    auto* list = dynamic_cast<platform::PSListController*>(&page);
    if (!list) return settings;
    for (const auto& row : list->specifiers()) {
        auto key = settingOf(*row);
        if (key && std::ranges::find(settings, *key) == settings.end()) settings.push_back(*std::move(key));
    }
    return settings;
}

}  // namespace hosts
