// SPDX-License-Identifier: MIT
#pragma once

#include "pages/list_page_controller.h"

namespace trivel3 {

/// The hub of the feature pages: every secondary setting, and the links to the pages of those that
/// have more than one.
class KavixPreferencesOptionsController final : public KavixPreferencesListController {
public:
    using KavixPreferencesListController::KavixPreferencesListController;
    static constexpr const char* registeredName = "KavixPreferencesOptionsController";
    const char* className() const override { return registeredName; }

    /// Loads the bundles that this page's links need: the app-list service and the sibling product's
    /// settings. One that is missing is passed over.
    static void initialize(platform::Platform& platform);

    using KavixPreferencesListController::getPreferences;
    /// The setting of that key.
    std::optional<platform::Value> getPreferences(std::string_view key) const;

    void setPreferences_specifier(const platform::Value& value, platform::PSSpecifier& specifier) override;
    /// As for a row with that identifier.
    void setPreferences_specifier(const platform::Value& value, std::string_view key);

    /// Opens the package page of the sibling product.
    void ostrelAction(platform::PSSpecifier& specifier);

protected:
    const PageTable& pageTable() const override;
    Facts readFacts() const override;
    void repair(Facts facts) override;
    Specifiers buildSpecifiers() override;
};

}  // namespace trivel3
