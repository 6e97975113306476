// SPDX-License-Identifier: MIT
#include "pages/list_page_controller.h"
#include "platform/services/mail_composer.h"
#include "platform/services/post_composer.h"
#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "resources/bundle_image.h"
#include "support/support_email.h"

namespace trivel3 {
namespace {

constexpr Facts multiCenter = 1;
constexpr Rule mc = all<multiCenter>;

// What a corner does depends on whether the Multi-Center has taken over the multitasking display.
constexpr Row rows[] = {
    group("Merge Multitasking and Control Center. Access by sliding up from the bottom. Slide an app preview down "
          "to expand it. Slide the Home Screen preview up to close all apps."),
    toggle("Multi-Center", "MultiCenter").withImage("Multi-Center"),
    group().footerIf(mc,
                     "Pull up from the bottom left corner of the screen to access, then release your finger on the "
                     "app you want to switch to.",
                     "Pull up from the bottom left corner of the screen to access, then release your finger on the "
                     "app you want to switch to. For the standard multitasking display, pull up further."),
    toggle("Quick Switcher", "QuickSwitcher").withImage("QuickSwitcher"),
    group().footerIf(mc, "Return to the Home Screen by swiping up from the bottom right corner of the screen.",
                     "Return to the Home Screen or reveal the multitasking display by swiping up from the bottom "
                     "right or left corners of the screen."),
    toggle("Hot Corners", "HotCorners").withImage("HotCorners"),
    group(),
    link("Advanced Options", "KavixPreferencesOptionsController").withImage("Configuration"),
    group(),
    link("The Creators", "KavixPreferencesProfileController").withImage("Creators"),
    group(),
    link("Fenwary Support").withImage("Support"),
};

constexpr PageTable page(rows);

constexpr double headerHeight = 114;
constexpr double titleTop = 10;
constexpr double titleHeight = 53;
constexpr double subtitleTop = 63;
constexpr double subtitleHeight = 34;

std::shared_ptr<platform::UILabel> makeHeaderLabel(platform::CGRect frame, const char* text, platform::UIFont font,
                                                   platform::UIColor color, int lines) {
    auto label = std::make_shared<platform::UILabel>(frame);
    label->setAutoresizingMask(platform::UIViewAutoresizingFlexibleWidth);
    label->setText(text);
    label->font = std::move(font);
    label->textColor = color;
    label->textAlignment = platform::NSTextAlignment::center;
    label->numberOfLines = lines;
    return label;
}

/// The name and the makers above the rows. It follows later changes of width.
std::shared_ptr<platform::UIView> makeHeaderView(double width) {
    auto header = std::make_shared<platform::UIView>(platform::CGRect{0, 0, width, headerHeight});
    header->setAutoresizingMask(platform::UIViewAutoresizingFlexibleWidth);

    auto title = makeHeaderLabel({0, titleTop, width, titleHeight}, "Trivel 3",
                                 platform::UIFont::fontWithName_size("HelveticaNeue-UltraLight", 45),
                                 platform::UIColor::blackColor(), 1);
    title->shadowColor = platform::UIColor::whiteColor();
    title->shadowOffset = {0, 1};
    header->addSubview(title);

    header->addSubview(makeHeaderLabel({0, subtitleTop, width, subtitleHeight},
                                       "by Movane and Daxon\nThank you for your purchase.",
                                       platform::UIFont::systemFontOfSize(14), platform::UIColor::grayColor(), 2));
    return header;
}

}  // namespace

/// The pane's first page: the three master switches, and the ways to the other pages, to support and
/// to the share message.
class KavixPreferencesController final : public KavixPreferencesListController,
                                         public platform::MFMailComposeViewControllerDelegate {
public:
    using KavixPreferencesListController::KavixPreferencesListController;
    static constexpr const char* registeredName = "KavixPreferencesController";
    const char* className() const override { return registeredName; }

    void setPreferences_specifier(const platform::Value& value, platform::PSSpecifier& specifier) override {
        KavixPreferencesListController::setPreferences_specifier(value, specifier);
        updateSpecifiers(true);
    }

    /// Opens a post with the share message.
    void heartButtonAction(platform::UIButton& sender);
    /// Opens an e-mail to the support desk.
    void supportSpecifierAction(platform::PSSpecifier& specifier);
    void mailComposeController_didFinishWithResult_error(platform::MFMailComposeViewController& controller,
                                                         platform::MFMailComposeResult result,
                                                         const std::string& error) override;

protected:
    const PageTable& pageTable() const override { return page; }
    Facts readFacts() const override { return isOn("MultiCenter") ? multiCenter : 0; }
    Specifiers buildSpecifiers() override;
    void viewDidLoad() override;
};

platform::PSListController::Specifiers KavixPreferencesController::buildSpecifiers() {
    Specifiers built = KavixPreferencesListController::buildSpecifiers();
    built.back()->action = [this](platform::PSSpecifier& specifier) { supportSpecifierAction(specifier); };
    return built;
}

void KavixPreferencesController::viewDidLoad() {
    KavixPreferencesListController::viewDidLoad();
    navigationItem().setTitleView(platform::UIImageView::initWithImage(bundleImage(platform(), "Logo")));

    auto heart = std::make_shared<platform::UIButton>();
    heart->setImage_forState(bundleImage(platform(), "Heart"), platform::UIControlStateNormal);
    heart->setAccessibilityLabel("Share");
    heart->sizeToFit();
    heart->addTarget_action_forControlEvents([this](platform::UIButton& sender) { heartButtonAction(sender); },
                                             platform::UIControlEventTouchUpInside);
    navigationItem().setRightBarButtonItem(platform::UIBarButtonItem::initWithCustomView(heart));

    table().setTableHeaderView(makeHeaderView(view().bounds().width));
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

template void platform::addClass<trivel3::KavixPreferencesController>(ClassRegistry& classes);
