// SPDX-License-Identifier: MIT
#include "pages/root_page.h"

#include "pages/root_header_view.h"
#include "pages/row_table.h"
#include "platform/services/post_composer.h"
#include "platform/ui/image_view.h"
#include "resources/bundle_image.h"
#include "support/support_email.h"

namespace trivel3 {
namespace {

enum Position : std::size_t { quickSwitcherGroup = 2, hotCornersGroup = 4, supportRow = 11 };

constexpr RowDescription rows[] = {
    groupRow("Merge Multitasking and Control Center. Access by sliding up from the bottom. Slide an app preview down "
             "to expand it. Slide the Home Screen preview up to close all apps."),
    switchRow("Multi-Center", "MultiCenter", "Multi-Center"),
    groupRow(),
    switchRow("Quick Switcher", "QuickSwitcher", "QuickSwitcher"),
    groupRow(),
    switchRow("Hot Corners", "HotCorners", "HotCorners"),
    groupRow(),
    linkRow("Advanced Options", "KavixPreferencesOptionsController", "Configuration"),
    groupRow(),
    linkRow("The Creators", "KavixPreferencesProfileController", "Creators"),
    groupRow(),
    linkRow("Fenwary Support", {}, "Support"),
};

// What a corner does depends on whether the Multi-Center has taken over the multitasking display.
struct Footers {
    std::string_view quickSwitcher;
    std::string_view hotCorners;
};

constexpr Footers footersWithMultiCenter = {
    "Pull up from the bottom left corner of the screen to access, then release your finger on the app you want to "
    "switch to.",
    "Return to the Home Screen by swiping up from the bottom right corner of the screen.",
};

constexpr Footers footersWithoutMultiCenter = {
    "Pull up from the bottom left corner of the screen to access, then release your finger on the app you want to "
    "switch to. For the standard multitasking display, pull up further.",
    "Return to the Home Screen or reveal the multitasking display by swiping up from the bottom right or left "
    "corners of the screen.",
};

}  // namespace

platform::PSListController::Specifiers KavixPreferencesController::buildSpecifiers() {
    Specifiers built = makeRows(*this, rows);
    built[supportRow]->action = [this](platform::PSSpecifier& specifier) { supportSpecifierAction(specifier); };
    return built;
}

void KavixPreferencesController::setPreferences_specifier(const platform::Value& value,
                                                          platform::PSSpecifier& specifier) {
    KavixPreferencesListController::setPreferences_specifier(value, specifier);
    updateSpecifiers(true);
}

void KavixPreferencesController::updateSpecifiers(bool animated) {
    const Specifiers& master = masterSpecifiers();
    if (master.empty()) return;
    const bool multiCenter = platform::boolValue(store().preferenceForKey("MultiCenter"));
    const Footers& footers = multiCenter ? footersWithMultiCenter : footersWithoutMultiCenter;
    setFooter(master[quickSwitcherGroup], footers.quickSwitcher, animated);
    setFooter(master[hotCornersGroup], footers.hotCorners, animated);
}

void KavixPreferencesController::viewDidLoad() {
    KavixPreferencesListController::viewDidLoad();
    navigationItem().setTitleView(platform::UIImageView::initWithImage(bundleImage(platform(), "Logo")));

    auto heart = std::make_shared<platform::UIButton>();
    heart->setImage_forState(bundleImage(platform(), "Heart"), platform::UIControlStateNormal);
    heart->sizeToFit();
    heart->addTarget_action_forControlEvents([this](platform::UIButton& sender) { heartButtonAction(sender); },
                                             platform::UIControlEventTouchUpInside);
    navigationItem().setRightBarButtonItem(platform::UIBarButtonItem::initWithCustomView(heart));

    table().setTableHeaderView(makeRootHeaderView(view().bounds().width));
}

void KavixPreferencesController::heartButtonAction(platform::UIButton&) {
    auto composer = platform().posts.composeViewControllerForServiceType(platform(), platform::SLServiceTypeTwitter);
    if (composer) composer->setInitialText("I'm loving #Trivel3 from @Fenwary!");
    presentViewController_animated_completion(composer, true, nullptr);
}

void KavixPreferencesController::supportSpecifierAction(platform::PSSpecifier&) {
    const auto delegate = std::dynamic_pointer_cast<MFMailComposeViewControllerDelegate>(shared_from_this());
    presentViewController_animated_completion(makeSupportEmail(platform(), delegate), true, nullptr);
}

void KavixPreferencesController::mailComposeController_didFinishWithResult_error(platform::MFMailComposeViewController&,
                                                                                 platform::MFMailComposeResult,
                                                                                 const std::string&) {
    dismissViewControllerAnimated_completion(true, nullptr);
}

}  // namespace trivel3
