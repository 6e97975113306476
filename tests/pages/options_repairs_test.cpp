// SPDX-License-Identifier: MIT
// Settings that contradict one another, and what the options page makes of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pages/features/options_page.h"
#include "pane.h"
#include "platform/foundation/property_list.h"

namespace pages_test {
namespace {

using testing::ElementsAre;
using trivel3::KavixPreferencesOptionsController;

TEST(OptionsRepairs, clearTheAppSwitcherWhileTheOtherTwoTakeItsPlace) {
    Pane pane(kit::tablet);
    pane.setFile({{"AccessAppSwitcher", true}});
    pane.openQuietly(optionsPage);
    EXPECT_EQ(pane.stored("AccessAppSwitcher"), platform::Value(false));
    for (const char* off : {"MultiCenter", "QuickSwitcher"}) {
        Pane other(kit::tablet);
        other.setFile({{"AccessAppSwitcher", true}, {off, false}});
        other.openQuietly(optionsPage);
        EXPECT_EQ(other.stored("AccessAppSwitcher"), platform::Value(true)) << off;
    }
}

TEST(OptionsRepairs, leaveTheMediaConditionAloneWithinReach) {
    for (const auto& [before, after] : {std::pair{7, 1}, {6, 0}, {4, 0}, {2, 0}, {1, 1}, {0, 0}, {8, 8}, {15, 9}}) {
        Pane pane;
        pane.setFile({{"MinimalControlCenterCondition", before}});
        pane.openQuietly(optionsPage);
        EXPECT_EQ(pane.stored("MinimalControlCenterCondition"), platform::Value(after)) << before;
    }
}

TEST(OptionsRepairs, keepEveryConditionOutOfReach) {
    for (const char* off : {"ReachabilityMode", "MinimalControlCenterEnabled"}) {
        Pane pane;
        pane.setFile({{"MinimalControlCenterCondition", 7}, {off, false}});
        pane.openQuietly(optionsPage);
        EXPECT_EQ(pane.stored("MinimalControlCenterCondition"), platform::Value(7)) << off;
    }
}

TEST(OptionsRepairs, clearTheContactsEachTimeWhileTheMultiCenterIsOff) {
    Pane pane(kit::tablet);
    pane.setFile({{"MultiCenter", false}, {"PeopleInToday", false}});
    pane.openQuietly(optionsPage);
    for (int i = 0; i < 3; ++i) {
        pane.screen.pageAs<KavixPreferencesOptionsController>().updateSpecifiers(true);
        EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged()));
        EXPECT_EQ(pane.stored("PeopleInToday"), platform::Value(false));
    }
}

TEST(OptionsRepairs, areTriedAgainWhenTheWriteFailed) {
    Pane pane(kit::tablet);
    pane.phone.setWritesFail(true);
    pane.openQuietly(optionsPage);
    EXPECT_EQ(pane.file(), std::nullopt);
    pane.screen.appear();
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsNotWritten(), settingsChanged()));
    pane.phone.setWritesFail(false);
    pane.screen.appear();
    EXPECT_THAT(pane.log.take(), ElementsAre(settingsWritten(), settingsChanged()));
    EXPECT_EQ(pane.stored("AccessAppSwitcher"), platform::Value(false));
}

TEST(OptionsRepairs, areMadeBeforeThereAreRows) {
    Pane pane;
    auto page = pane.classes.make<KavixPreferencesOptionsController>(optionsPage, pane.services());
    page->updateSpecifiers(true);
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), settingsWritten(), settingsChanged()));
    EXPECT_EQ(pane.fileValue(),
              (platform::Dictionary{{"AccessAppSwitcher", false}, {"MinimalControlCenterCondition", 1}}));
}

TEST(OptionsRepairs, keepTheKeysThatThePaneDoesNotKnow) {
    Pane pane;
    pane.setFile({{"Unknown", "kept"}});
    pane.openQuietly(optionsPage);
    EXPECT_EQ(pane.stored("Unknown"), platform::Value("kept"));
}

/// A settings file in memory that notes which keys each write of it has changed.
class ChangedKeys final : public platform::FileSystem {
public:
    explicit ChangedKeys(platform::Dictionary content) : _content(std::move(content)) {}

    platform::Result<platform::Stamp> look(std::string_view path) const override {
        if (path != settingsFile) return platform::Problem{};
        return platform::Stamp{.inode = _changes, .isSettled = true};
    }
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t) const override {
        contents = path == settingsFile ? platform::writeXmlPropertyList(_content).bytes.value() : "";
        return look(path);
    }
    platform::Result<std::vector<std::string>> listFolder(std::string_view) const override {
        return std::vector<std::string>();
    }
    platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change& change) override {
        const auto contents = change(platform::writeXmlPropertyList(_content).bytes.value());
        ++_changes;
        const platform::Dictionary before =
            std::exchange(_content, *platform::readPropertyList(contents->bytes).value->dictionary());
        for (const auto& [key, value] : _content) {
            const platform::Value* old = before.find(key);
            if (!old || *old != value) keys.push_back(key);
        }
        return look(path);
    }

    std::vector<std::string> keys;

private:
    platform::Dictionary _content;
    std::uint64_t _changes = 0;
};

std::vector<std::string> keysRepairedIn(platform::Dictionary settings) {
    Pane pane;
    ChangedKeys files(std::move(settings));
    platform::Platform& usual = pane.services();
    platform::Platform watched{
        files,      usual.notifications, usual.classes, usual.system, usual.application, usual.deviceQuery,
        usual.mail, usual.posts,         usual.device,  usual.screen};
    auto page = std::make_shared<KavixPreferencesOptionsController>(watched);
    page->view();
    page->viewWillAppear(false);
    return files.keys;
}

TEST(OptionsRepairs, areMadeInTheirOrder) {
    platform::Dictionary settings{
        {"AccessAppSwitcher", true}, {"MinimalControlCenterCondition", 7}, {"PeopleInToday", true}};
    EXPECT_THAT(keysRepairedIn(settings), ElementsAre("AccessAppSwitcher", "MinimalControlCenterCondition"));
    settings.set("MultiCenter", false);
    EXPECT_THAT(keysRepairedIn(settings), ElementsAre("MinimalControlCenterCondition", "PeopleInToday"));
}

}  // namespace
}  // namespace pages_test
