// SPDX-License-Identifier: MIT
#pragma once

#include "pages/list_page_controller.h"
#include "platform/services/mail_composer.h"
#include "platform/ui/button.h"

namespace trivel3 {

/// The pane's first page: the three master switches, and the ways to the other pages, to support and
/// to the share message.
class KavixPreferencesController final : public KavixPreferencesListController,
                                         public platform::MFMailComposeViewControllerDelegate {
public:
    using KavixPreferencesListController::KavixPreferencesListController;
    const char* className() const override { return "KavixPreferencesController"; }

    void setPreferences_specifier(const platform::Value& value, platform::PSSpecifier& specifier) override;
    void updateSpecifiers(bool animated) override;

    /// Opens a post with the share message.
    void heartButtonAction(platform::UIButton& sender);
    /// Opens an e-mail to the support desk.
    void supportSpecifierAction(platform::PSSpecifier& specifier);
    void mailComposeController_didFinishWithResult_error(platform::MFMailComposeViewController& controller,
                                                         platform::MFMailComposeResult result,
                                                         const std::string& error) override;

protected:
    void viewDidLoad() override;
    Specifiers buildSpecifiers() override;
};

}  // namespace trivel3
