// SPDX-License-Identifier: MIT
#pragma once

#include "pages/choice_rows.h"

namespace trivel3 {

/// When the Quick Launcher shows, with and without media playing, and after how long it goes away.
class KavixPreferencesQuickLauncherController final : public KavixPreferencesChoiceController {
public:
    using KavixPreferencesChoiceController::KavixPreferencesChoiceController;
    const char* className() const override { return "KavixPreferencesQuickLauncherController"; }

    /// Shows the delays only when there is something to dismiss.
    void updateSpecifiers(bool animated) override;

protected:
    Specifiers buildSpecifiers() override;
    std::span<const ChoiceRule> choiceRules() const override;
};

}  // namespace trivel3
