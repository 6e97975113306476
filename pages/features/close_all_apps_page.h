// SPDX-License-Identifier: MIT
#pragma once

#include "pages/application_page_controller.h"

namespace trivel3 {

/// How the gesture that closes all applications behaves, and which applications it spares.
class KavixPreferencesCloseAllAppsController final : public KavixPreferencesApplicationPageController {
public:
    using KavixPreferencesApplicationPageController::KavixPreferencesApplicationPageController;
    const char* className() const override { return "KavixPreferencesCloseAllAppsController"; }

protected:
    Specifiers buildSpecifiers() override;
    std::size_t firstApplicationSection() const override;
    /// Takes a stored value that is no dictionary out of the settings.
    bool isTicked(const std::string& identifier) override;
    void setTicked(bool ticked, const std::string& identifier) override;
};

}  // namespace trivel3
