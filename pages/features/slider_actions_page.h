// SPDX-License-Identifier: MIT
#pragma once

#include "pages/choice_rows.h"

namespace trivel3 {

/// What a tap on the sliders' icons does, and whether the system's slider display is suppressed. No
/// row depends on another.
class KavixPreferencesSliderActionsController final : public KavixPreferencesChoiceController {
public:
    using KavixPreferencesChoiceController::KavixPreferencesChoiceController;
    const char* className() const override { return "KavixPreferencesSliderActionsController"; }

    void updateSpecifiers(bool) override {}

protected:
    Specifiers buildSpecifiers() override;
    std::span<const ChoiceRule> choiceRules() const override;
};

}  // namespace trivel3
