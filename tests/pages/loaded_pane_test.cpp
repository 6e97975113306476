// SPDX-License-Identifier: MIT
// The pane as a host has it: loaded from its bundle, nothing of it linked in.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/services/mail_composer.h"
#include "platform/services/post_composer.h"
#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "tests/kit/test_platform.h"

namespace loaded_pane_test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto paneBundle = "/Library/PreferenceBundles/Trivel3Preferences.bundle";
constexpr auto packagePage = "cydia://package/com.fenwary.ostrel";

/// A platform whose system image holds the pane, loaded and opened at its root page.
class LoadedPane : public kit::TestPlatform {
public:
    explicit LoadedPane(const std::string& systemImage) : TestPlatform(kit::tallPhone, systemImage) {
        auto bundle = system.bundleWithPath(paneBundle);
        EXPECT_TRUE(bundle && bundle->load());
        screen.open(bundle ? bundle->infoString("NSPrincipalClass") : "");
    }
};

TEST(LoadedPane, opensTheClassThatItsBundleNames) {
    LoadedPane pane(kit::stagedSystemImage());
    EXPECT_STREQ(pane.screen.top()->className(), "KavixPreferencesController");
    EXPECT_THAT(pane.screen.labels(), ElementsAre("Multi-Center", "Quick Switcher", "Hot Corners", "Advanced Options",
                                                  "The Creators", "Fenwary Support"));
}

TEST(LoadedPane, opensEveryPageOfItsOwnAndGoesBack) {
    LoadedPane pane(kit::stagedSystemImage());
    EXPECT_TRUE(pane.screen.moveSwitch("Multi-Center", true));
    pane.screen.tap("The Creators");
    EXPECT_STREQ(pane.screen.top()->className(), "KavixPreferencesProfileController");
    EXPECT_TRUE(pane.screen.back());
    pane.screen.tap("Advanced Options");
    EXPECT_TRUE(pane.screen.moveSwitch("Reachable Display", false));
    for (const char* label :
         {"Quick Launcher", "Slider Actions", "Album Artwork", "Close All Apps", "Disable in Applications"}) {
        pane.screen.tap(label);
        EXPECT_EQ(pane.screen.top()->title(), label);
        EXPECT_TRUE(pane.screen.back());
        EXPECT_STREQ(pane.screen.top()->className(), "KavixPreferencesOptionsController") << label;
    }
}

TEST(LoadedPane, handsItsViewsOverAsWhatTheyAre) {
    LoadedPane pane(kit::stagedSystemImage());
    const auto header = pane.screen.page().table().tableHeaderView();
    ASSERT_TRUE(header && !header->subviews().empty());
    auto* title = dynamic_cast<platform::UILabel*>(header->subviews().front().get());
    ASSERT_TRUE(title);
    EXPECT_EQ(title->text(), "Trivel 3");
    EXPECT_TRUE(std::dynamic_pointer_cast<platform::UIImageView>(pane.screen.page().navigationItem().titleView()));
}

TEST(LoadedPane, fillsInTheComposersThatTheHostMakes) {
    LoadedPane pane(kit::stagedSystemImage());
    pane.screen.tap("Fenwary Support");
    auto mail = std::dynamic_pointer_cast<platform::MFMailComposeViewController>(pane.screen.presented());
    ASSERT_TRUE(mail);
    EXPECT_EQ(mail->subject(), "Trivel Support");
    mail->finish(platform::MFMailComposeResult::cancelled);
    EXPECT_EQ(pane.screen.presented(), nullptr);

    auto heart = pane.screen.page().navigationItem().rightBarButtonItem()->customView();
    dynamic_cast<platform::UIButton&>(*heart).sendActionsForControlEvents(platform::UIControlEventTouchUpInside);
    auto post = std::dynamic_pointer_cast<platform::SLComposeViewController>(pane.screen.presented());
    ASSERT_TRUE(post);
    EXPECT_THAT(post->text(), testing::StartsWith("I'm loving"));
}

TEST(LoadedPane, keepsTwoPlatformsApart) {
    LoadedPane left(kit::stagedSystemImage());
    LoadedPane right(TRIVEL3_SYSTEM_WITH_SIBLING);
    left.log.take();
    EXPECT_TRUE(right.screen.moveSwitch("Multi-Center", false));
    right.screen.tap("Advanced Options");
    EXPECT_THAT(left.log.take(), IsEmpty());
    EXPECT_TRUE(left.screen.isOn("Multi-Center"));
    EXPECT_FALSE(left.classes.contains("OstrelPrefsController"));
    EXPECT_TRUE(right.classes.contains("OstrelPrefsController"));
}

TEST(InstalledSibling, isLoadedWhenTheOptionsPageIsFirstUsedAndNotBefore) {
    LoadedPane pane(TRIVEL3_SYSTEM_WITH_SIBLING);
    EXPECT_FALSE(pane.classes.contains("OstrelPrefsController"));
    pane.screen.tap("Advanced Options");
    EXPECT_TRUE(pane.classes.contains("OstrelPrefsController"));
}

TEST(InstalledSibling, isLoadedAfterTheAppList) {
    LoadedPane pane(TRIVEL3_SYSTEM_WITH_SIBLING);
    EXPECT_FALSE(pane.classes.contains("FirstLoaded"));
    pane.screen.tap("Advanced Options");
    auto first = pane.classes.make<platform::PSListController>("FirstLoaded", pane.services());
    ASSERT_TRUE(first);
    EXPECT_STREQ(first->className(), "AppList");
}

TEST(InstalledSibling, opensItsOwnSettingsPageFromTheOstrelRow) {
    LoadedPane pane(TRIVEL3_SYSTEM_WITH_SIBLING);
    pane.screen.tap("Advanced Options");
    pane.log.take();
    pane.screen.tap("Ostrel");
    EXPECT_THAT(pane.log.take(), ElementsAre(kit::event::push("OstrelPrefsController")));
    EXPECT_EQ(pane.screen.top()->title(), "Ostrel");
    EXPECT_THAT(pane.screen.labels(), ElementsAre("Sibling"));
    EXPECT_TRUE(pane.screen.back());
    EXPECT_STREQ(pane.screen.top()->className(), "KavixPreferencesOptionsController");
}

TEST(InstalledSibling, leavesTheOstrelRowALinkLikeAnyOther) {
    LoadedPane pane(TRIVEL3_SYSTEM_WITH_SIBLING);
    pane.screen.tap("Advanced Options");
    const auto row = pane.screen.row("Ostrel");
    EXPECT_EQ(row->detailControllerClass(), "OstrelPrefsController");
    EXPECT_FALSE(row->action);
    EXPECT_FALSE(row->propertyForKey("enabled"));
    EXPECT_EQ(row->textForKey("label"), "Ostrel");
    ASSERT_TRUE(row->iconImage());
    EXPECT_EQ(row->iconImage()->name(), "Ostrel");
}

constexpr auto siblingInfo =
    "<plist version=\"1.0\"><dict><key>CFBundleExecutable</key><string>OstrelSettings</string></dict></plist>";

/// A system image that a test puts together: the pane, and a sibling's bundle in some state.
class SystemImage {
public:
    SystemImage() {
        fs::create_directories(sibling());
        fs::create_directory_symlink(fs::path(kit::stagedSystemImage()) / fs::path(paneBundle).relative_path(),
                                     _folder.path() / fs::path(paneBundle).relative_path());
    }

    std::string path() const { return _folder.path(); }

    /// Puts a whole sibling in place of the empty one.
    void installSibling() const {
        fs::remove(sibling());
        fs::create_directory_symlink(
            fs::path(TRIVEL3_SYSTEM_WITH_SIBLING) / "Library/PreferenceBundles/OstrelSettings.bundle", sibling());
    }

    /// An app-list bundle that names a module which it does not have.
    void putBrokenAppList() const {
        const fs::path bundle = _folder.path() / "System/Library/PreferenceBundles/AppList.bundle";
        fs::create_directories(bundle);
        std::ofstream(bundle / "Info.plist") << siblingInfo;
    }

    void putInSibling(const char* name, std::string_view content) const {
        std::ofstream(sibling() / name, std::ios::binary) << content;
    }

private:
    fs::path sibling() const { return _folder.path() / "Library/PreferenceBundles/OstrelSettings.bundle"; }

    kit::TemporaryFolder _folder;
};

void expectSiblingLoaded(const SystemImage& image) {
    LoadedPane pane(image.path());
    EXPECT_FALSE(pane.classes.contains("OstrelPrefsController"));
    pane.screen.tap("Advanced Options");
    EXPECT_TRUE(pane.classes.contains("OstrelPrefsController"));
}

TEST(InstalledSibling, isLoadedThoughTheAppListIsMissing) {
    const SystemImage image;
    image.installSibling();
    expectSiblingLoaded(image);
}

TEST(InstalledSibling, isLoadedThoughTheAppListIsBroken) {
    const SystemImage image;
    image.installSibling();
    image.putBrokenAppList();
    expectSiblingLoaded(image);
}

void expectFallback(const std::string& systemImage) {
    LoadedPane pane(systemImage);
    pane.screen.tap("Advanced Options");
    pane.log.take();
    pane.screen.tap("Ostrel");
    EXPECT_THAT(pane.log.take(), ElementsAre(kit::event::openUrl(packagePage, false)));
}

TEST(MissingSibling, leavesThePackagePage) {
    expectFallback(kit::stagedSystemImage());
}

TEST(BrokenSibling, leavesThePackagePageWhenItHasNoInfo) {
    const SystemImage image;
    expectFallback(image.path());
}

TEST(BrokenSibling, leavesThePackagePageWhenItsModuleIsMissing) {
    const SystemImage image;
    image.putInSibling("Info.plist", siblingInfo);
    expectFallback(image.path());
}

TEST(BrokenSibling, leavesThePackagePageWhenItsModuleIsNone) {
    const SystemImage image;
    image.putInSibling("Info.plist", siblingInfo);
    image.putInSibling("OstrelSettings", "no module at all");
    expectFallback(image.path());
}

}  // namespace
}  // namespace loaded_pane_test
