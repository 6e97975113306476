// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "platform/list/list_controller.h"
#include "store/preference_store.h"

namespace trivel3 {

/// What every list page of the pane has: the store, and the getter and setter that its switch rows
/// are bound to.
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
};

}  // namespace trivel3
