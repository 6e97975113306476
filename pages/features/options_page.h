// SPDX-License-Identifier: MIT
#pragma once

#include "pages/choice_rows.h"
#include "pages/features/options_state.h"

namespace trivel3 {

/// The hub of the feature pages: every secondary setting, and the links to the pages of those that
/// have more than one.
class KavixPreferencesOptionsController final : public KavixPreferencesChoiceController {
public:
    using KavixPreferencesChoiceController::KavixPreferencesChoiceController;
    const char* className() const override { return "KavixPreferencesOptionsController"; }

    /// Loads the bundles that this page's links need: the app-list service and the sibling product's
    /// settings. One that is missing is passed over.
    static void initialize(platform::Platform& platform);

    using KavixPreferencesChoiceController::getPreferences;
    /// The setting of that key.
    std::optional<platform::Value> getPreferences(std::string_view key) const;

    void setPreferences_specifier(const platform::Value& value, platform::PSSpecifier& specifier) override;
    /// As for a row with that identifier.
    void setPreferences_specifier(const platform::Value& value, std::string_view key);

    /// Also repairs settings that contradict one another, with a write each.
    void updateSpecifiers(bool animated) override;

    /// Opens the package page of the sibling product.
    void ostrelAction(platform::PSSpecifier& specifier);

protected:
    Specifiers buildSpecifiers() override;
    std::span<const ChoiceRule> choiceRules() const override;

private:
    void repairSettings(const options::State& state);
    void updateEnabled(const options::State& state, bool animated);
    void updatePresence(const options::State& state, bool animated);
    void updateFooters(const options::State& state, bool animated);
};

}  // namespace trivel3
