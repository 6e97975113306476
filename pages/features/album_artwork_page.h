// SPDX-License-Identifier: MIT
#pragma once

#include "pages/choice_rows.h"

namespace trivel3 {

/// On which media events the album artwork shows itself, and after how long it goes away.
class KavixPreferencesAlbumArtworkController final : public KavixPreferencesChoiceController {
public:
    using KavixPreferencesChoiceController::KavixPreferencesChoiceController;
    const char* className() const override { return "KavixPreferencesAlbumArtworkController"; }

    /// Shows the delays only when some event shows the artwork.
    void updateSpecifiers(bool animated) override;

protected:
    Specifiers buildSpecifiers() override;
    std::span<const ChoiceRule> choiceRules() const override;
};

}  // namespace trivel3
