// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>

#include "pages/page_table.h"
#include "platform/foundation/class_definition.h"
#include "platform/list/list_controller.h"
#include "store/preference_store.h"

namespace trivel3 {

/// What every list page of the pane has: the store, rows made of a table, and the getter and setter
/// that its switch rows are bound to.
class KavixPreferencesPageController : public platform::PSListController {
public:
    using platform::PSListController::PSListController;

    /// The setting that the row's identifier names, by the read rule.
    std::optional<platform::Value> getPreferences(platform::PSSpecifier& specifier) const;

    /// The write rule for the setting that the row's identifier names, and nothing after it. Pages
    /// with rows that depend on their switches override it.
    virtual void setPreferences_specifier(const platform::Value& value, platform::PSSpecifier& specifier);

protected:
    PreferenceStore store() const { return PreferenceStore(platform()); }
    bool isOn(SettingKey key) const { return platform::boolValue(store().preferenceForKey(key)); }

    /// Newly made, in the table's order. A link to a class that does not exist now leads nowhere.
    Specifiers makeRows(std::span<const Row> table);

private:
    std::shared_ptr<platform::PSSpecifier> makeRow(const Row& row);
};

}  // namespace trivel3
