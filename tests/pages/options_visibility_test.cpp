// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "pages/features/options_page.h"
#include "pane.h"

namespace pages_test {
namespace {

using kit::atOnce;
using kit::withAnimation;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using trivel3::KavixPreferencesOptionsController;
namespace event = kit::event;
using Events = std::vector<kit::Event>;
using Labels = std::vector<std::string>;

const Labels conditions = {"Always", "If no Media is Playing", "If AirPlay is undetected", "If AirDrop is Off"};

KavixPreferencesOptionsController& options(Pane& pane) {
    return pane.screen.pageAs<KavixPreferencesOptionsController>();
}

void expectLook(const Pane& pane, const kit::PageState& state) {
    const kit::PageTable& table = kit::optionsTable();
    EXPECT_EQ(pane.screen.labels(), kit::expectedLabels(table, state));
    EXPECT_EQ(pane.screen.greyedLabels(), kit::expectedGreyedLabels(table, state));
    EXPECT_EQ(pane.screen.footers(), kit::expectedFooters(table, state));
}

/// What a tall phone without a settings file is in.
constexpr kit::PageState defaults = {.reachable = true};

/// The redraws of the rows that are greyed or made usable when the page first appears, all rows
/// being there still.
Events firstReloads() {
    Events events;
    const auto& rows = kit::optionsTable().rows;
    for (std::size_t position = 0; position < rows.size(); ++position) {
        if (rows[position].usable) events.push_back(event::reload(rows[position].label, position, atOnce));
    }
    return events;
}

Events joined(std::initializer_list<Events> parts) {
    Events all;
    for (const Events& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST(OptionsOnATallPhone, repairsGreysTrimsAndExplainsInThatOrder) {
    Pane pane;
    pane.screen.open(optionsPage);
    EXPECT_THAT(pane.log.take(),
                ElementsAreArray(joined({{event::push("KavixPreferencesOptionsController"), settingsWritten(),
                                          settingsChanged(), settingsWritten(), settingsChanged()},
                                         firstReloads(),
                                         {event::remove({"Apply to Quick Switcher"}, 10, atOnce),
                                          event::reload("", 2, atOnce), event::reload("", 24, atOnce)}})));
}

TEST(OptionsOnATallPhone, showsAllButTheQuickSwitchersShareWithoutAFile) {
    Pane pane;
    pane.openQuietly(optionsPage);
    expectLook(pane, defaults);
    EXPECT_EQ(pane.fileValue(),
              (platform::Dictionary{{"AccessAppSwitcher", false}, {"MinimalControlCenterCondition", 1}}));
}

TEST(OptionsOnAShortPhone, greysBeforeItRemovesWhatTheScreenHasNoRoomFor) {
    Pane pane(kit::shortPhone);
    pane.screen.open(optionsPage);
    EXPECT_THAT(pane.log.take(),
                ElementsAreArray(
                    joined({{event::push("KavixPreferencesOptionsController"), settingsWritten(), settingsChanged()},
                            firstReloads(),
                            {event::remove({"", "Reachable Display"}, 0, atOnce),
                             event::remove({"", "Minimal Display", "Always", "If no Media is Playing",
                                            "If AirPlay is undetected", "If AirDrop is Off"},
                                           0, atOnce),
                             event::remove({"Apply to Quick Switcher"}, 2, atOnce), event::reload("", 16, atOnce)}})));
    EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{"AccessAppSwitcher", false}}));
}

TEST(OptionsOnAShortPhone, takesTheMinimalDisplayAsOnAndTheReachableOneAsOff) {
    for (const bool stored : {false, true}) {
        Pane pane(kit::shortPhone);
        pane.setFile({{"MinimalControlCenterEnabled", !stored},
                      {"ReachabilityMode", stored},
                      {"MinimalControlCenterCondition", 7}});
        pane.openQuietly(optionsPage);
        EXPECT_EQ(pane.stored("MinimalControlCenterCondition"), platform::Value(7));
        EXPECT_FALSE(pane.screen.isGreyed("Quick Launcher"));
        EXPECT_EQ(pane.screen.labels().front(), "Open to Last App");
        for (const auto& row : {"Reachable Display", "Minimal Display"}) {
            EXPECT_THAT(pane.screen.labels(), Not(Contains(row)));
        }
        for (const auto& row : conditions)
            EXPECT_THAT(pane.screen.labels(), Not(Contains(row)));
    }
}

TEST(OptionsOnAShortPhone, makesTheConditionsUsableBeforeTheyGo) {
    Pane pane(kit::shortPhone);
    pane.setFile({{"MinimalControlCenterEnabled", false}, {"ReachabilityMode", true}});
    auto page = pane.classes.make<KavixPreferencesOptionsController>(optionsPage, pane.services());
    const auto rows = page->specifiers();
    page->viewWillAppear(false);
    for (std::size_t position = 4; position < 8; ++position) {
        EXPECT_TRUE(rows[position]->isEnabled()) << rows[position]->name();
        EXPECT_FALSE(page->containsSpecifier(rows[position])) << rows[position]->name();
    }
}

TEST(OptionsOnAShortPhone, keepsTheFooterThatItIsBuiltWithWhateverTheFileHolds) {
    Pane pane(kit::shortPhone);
    pane.setFile({{"MinimalControlCenterEnabled", true}, {"ReachabilityMode", true}});
    auto page = pane.classes.make<KavixPreferencesOptionsController>(optionsPage, pane.services());
    const auto rows = page->specifiers();
    page->viewWillAppear(false);
    EXPECT_EQ(rows[2]->textForKey("footerText"), "Hides AirDrop/AirPlay and Track-Seeker.");
}

TEST(OptionsOnEachDevice, readsTheTwoDisplaysOnATallPhoneAlone) {
    for (const auto& [shape, reads] : {std::pair{kit::tallPhone, 6u}, {kit::shortPhone, 4u}, {kit::tablet, 4u}}) {
        Pane pane(shape);
        // Nothing here is to be repaired.
        pane.setFile({{"QuickSwitcher", false}, {"ReachabilityMode", false}});
        pane.openQuietly(optionsPage);
        pane.phone.takeReads(settingsFile);
        options(pane).updateSpecifiers(true);
        EXPECT_EQ(pane.phone.takeReads(settingsFile), reads) << shape.height;
    }
}

TEST(OptionsOnEachDevice, removesADevicesRowsWithAnimationWhereThatIsAskedFor) {
    Pane pane;
    pane.openQuietly(optionsPage);
    pane.services().device.userInterfaceIdiom = 1;
    options(pane).updateSpecifiers(true);
    const auto removals = only(kit::Event::Kind::remove, pane.log.take());
    EXPECT_EQ(removals.size(), 6u);
    for (const kit::Event& removal : removals)
        EXPECT_EQ(removal.flag, withAnimation) << removal;
}

TEST(OptionsOnATablet, removesEachPhoneFeatureInItsTurn) {
    Pane pane(kit::tablet);
    pane.screen.open(optionsPage);
    EXPECT_THAT(
        pane.log.take(),
        ElementsAreArray(
            joined({{event::push("KavixPreferencesOptionsController"), settingsWritten(), settingsChanged()},
                    firstReloads(),
                    {event::remove({"", "Reachable Display"}, 0, atOnce),
                     event::remove({"", "Minimal Display", "Always", "If no Media is Playing",
                                    "If AirPlay is undetected", "If AirDrop is Off"},
                                   0, atOnce),
                     event::remove({"", "Quick Launcher"}, 3, atOnce), event::remove({"", "Slider Actions"}, 3, atOnce),
                     event::remove({"", "Unlimited Quick Switcher"}, 7, atOnce),
                     event::remove({"", "Move Recent Contacts to NC"}, 15, atOnce),
                     event::remove({"Apply to Quick Switcher"}, 2, atOnce), event::reload("", 10, atOnce)}})));
}

struct Screen {
    std::optional<int> idiom;
    double height;
    bool isPhone;
    bool isTall;
};

class OptionsByDevice : public testing::TestWithParam<Screen> {};

TEST_P(OptionsByDevice, measuresTheScreenOnAPhoneAlone) {
    Pane pane;
    pane.services().device.userInterfaceIdiom = GetParam().idiom;
    pane.services().screen.bounds.height = GetParam().height;
    pane.openQuietly(optionsPage);
    const auto labels = pane.screen.labels();
    EXPECT_EQ(std::ranges::count(labels, "Reachable Display"), GetParam().isTall);
    EXPECT_EQ(std::ranges::count(labels, "Minimal Display"), GetParam().isTall);
    EXPECT_EQ(std::ranges::count(labels, "Quick Launcher"), GetParam().isPhone);
    EXPECT_EQ(std::ranges::count(labels, "Move Recent Contacts to NC"), GetParam().isPhone);
}

INSTANTIATE_TEST_SUITE_P(Shapes, OptionsByDevice,
                         testing::Values(Screen{0, 568, true, true}, Screen{0, 567.5, true, false},
                                         Screen{0, 736, true, true}, Screen{0, 480, true, false},
                                         Screen{std::nullopt, 568, true, true}, Screen{std::nullopt, 480, true, false},
                                         Screen{1, 1024, false, false}, Screen{1, 480, false, false},
                                         Screen{2, 1080, false, false}, Screen{-1, 568, false, false}));

// What follows a change.

TEST(OptionsPage, redrawsNothingTheSecondTimeButRepairsAgain) {
    Pane pane;
    pane.openQuietly(optionsPage);
    options(pane).updateSpecifiers(true);
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), settingsWritten(), settingsChanged()));
}

TEST(OptionsPage, removesTheConditionsWithAnimationAndBringsThemBackUnderTheSwitch) {
    Pane pane;
    pane.openQuietly(optionsPage);
    EXPECT_TRUE(pane.screen.moveSwitch("Minimal Display", false));
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), settingsWritten(), settingsChanged(),
                            event::reload("Always", 4, withAnimation),
                            event::reload("If no Media is Playing", 5, withAnimation),
                            event::reload("Quick Launcher", 11, withAnimation),
                            event::remove(conditions, 4, withAnimation), event::reload("", 2, withAnimation)));
    expectLook(pane, {.minimal = false, .reachable = true});

    EXPECT_TRUE(pane.screen.moveSwitch("Minimal Display", true));
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), settingsWritten(), settingsChanged(),
                            settingsWritten(), settingsChanged(), event::reload("Quick Launcher", 7, withAnimation),
                            event::insert(conditions, 4, withAnimation), event::reload("", 2, withAnimation)));
    expectLook(pane, defaults);
}

TEST(OptionsPage, showsTheQuickSwitchersShareOnlyWhileItOpensToTheLastApp) {
    Pane pane;
    pane.openQuietly(optionsPage);
    EXPECT_TRUE(pane.screen.moveSwitch("Open to Last App", true));
    EXPECT_THAT(pane.log.take(), Contains(event::insert({"Apply to Quick Switcher"}, 10, withAnimation)));
    EXPECT_EQ(pane.screen.labels(1).back(), "If AirDrop is Off");
    EXPECT_THAT(pane.screen.labels(2), ElementsAre("Open to Last App", "Apply to Quick Switcher"));
    EXPECT_TRUE(pane.screen.moveSwitch("Open to Last App", false));
    EXPECT_THAT(pane.log.take(), Contains(event::remove({"Apply to Quick Switcher"}, 10, withAnimation)));
}

TEST(OptionsPage, followsAChangeMadeElsewhereAtOnceWhenItAppearsAgain) {
    Pane pane;
    pane.openQuietly(optionsPage);
    pane.setInFile("MinimalControlCenterEnabled", false);
    pane.screen.appear();
    EXPECT_THAT(pane.log.take(), Contains(event::remove(conditions, 4, atOnce)));
}

TEST(OptionsPage, bringsEveryRowBackOnReloadAndTrimsItAnew) {
    Pane pane(kit::tablet);
    auto& page = pane.openQuietly(optionsPage);
    const auto labels = pane.screen.labels();
    page.reloadSpecifiers();
    EXPECT_THAT(pane.log.take(), ElementsAre(event::reloadTable("KavixPreferencesOptionsController"), settingsWritten(),
                                             settingsChanged(), event::remove({"", "Reachable Display"}, 0, atOnce),
                                             event::remove({"", "Minimal Display", "Always", "If no Media is Playing",
                                                            "If AirPlay is undetected", "If AirDrop is Off"},
                                                           0, atOnce),
                                             event::remove({"", "Quick Launcher"}, 3, atOnce),
                                             event::remove({"", "Slider Actions"}, 3, atOnce),
                                             event::remove({"", "Unlimited Quick Switcher"}, 7, atOnce),
                                             event::remove({"", "Move Recent Contacts to NC"}, 15, atOnce),
                                             event::remove({"Apply to Quick Switcher"}, 2, atOnce)));
    EXPECT_EQ(pane.screen.labels(), labels);
}

TEST(OptionsPage, neverBringsADevicesRowsBackByItself) {
    Pane pane(kit::tablet);
    auto& page = pane.openQuietly(optionsPage);
    const auto labels = pane.screen.labels();
    pane.services().device.userInterfaceIdiom = 0;
    pane.screen.appear();
    // The conditions would come back under "Minimal Display", but that is not there.
    EXPECT_EQ(pane.screen.labels(), labels);
    page.reloadSpecifiers();
    EXPECT_EQ(pane.screen.labels().front(), "Reachable Display");
}

TEST(OptionsPage, refusesTheSwitchesOfGreyedRows) {
    Pane pane;
    pane.openQuietly(optionsPage);
    EXPECT_FALSE(pane.screen.moveSwitch("Access App Switcher", true));
    EXPECT_THAT(pane.log.take(), IsEmpty());
    pane.screen.tap("Quick Launcher");
    EXPECT_THAT(pane.log.take(), IsEmpty());
    EXPECT_STREQ(pane.screen.top()->className(), "KavixPreferencesOptionsController");
}

// Every combination of the settings, against the table of expectations.

constexpr kit::Shape devices[] = {kit::tallPhone, kit::shortPhone, kit::tablet};

platform::Dictionary settingsOf(unsigned bits) {
    return {{"MultiCenter", (bits & 1) != 0},
            {"QuickSwitcher", (bits & 2) != 0},
            {"HotCorners", (bits & 4) != 0},
            {"MinimalControlCenterEnabled", (bits & 8) != 0},
            {"ReachabilityMode", (bits & 16) != 0},
            {"OpenToLastApp", (bits & 32) != 0},
            {"MinimalControlCenterCondition", 7},
            {"AccessAppSwitcher", true},
            {"PeopleInToday", true}};
}

kit::PageState stateOf(const platform::Dictionary& settings, const kit::Shape& device) {
    const bool phone = device.idiom == 0;
    return kit::pageState(phone, phone && device.height >= 568,
                          [&settings](std::string_view key) { return settings.valueForKey(key); });
}

void expectRepairs(const Pane& pane, const kit::PageState& s) {
    EXPECT_EQ(pane.stored("AccessAppSwitcher"), platform::Value(!(s.quickSwitcher && s.multiCenter)));
    EXPECT_EQ(pane.stored("MinimalControlCenterCondition"), platform::Value(s.minimal && s.reachable ? 1 : 7));
    EXPECT_EQ(pane.stored("PeopleInToday"), platform::Value(s.multiCenter));
}

TEST(OptionsByRule, looksRightForEverySettingOnEveryDevice) {
    for (const kit::Shape& device : devices) {
        for (unsigned bits = 0; bits < 64; ++bits) {
            SCOPED_TRACE(testing::Message() << "height " << device.height << ", settings " << bits);
            const auto settings = settingsOf(bits);
            Pane pane(device);
            pane.setFile(settings);
            pane.openQuietly(optionsPage);
            expectRepairs(pane, stateOf(settings, device));
            expectLook(pane, stateOf(settings, device));
        }
    }
}

TEST(OptionsByRule, getsFromAnyLookToAnyOther) {
    for (const kit::Shape& device : devices) {
        Pane pane(device);
        pane.openQuietly(optionsPage);
        for (unsigned from = 0; from < 64; ++from) {
            for (unsigned to = 0; to < 64; to += 5) {
                SCOPED_TRACE(testing::Message() << "height " << device.height << ", settings " << from << " to " << to);
                pane.setFile(settingsOf(from));
                pane.screen.appear();
                pane.setFile(settingsOf(to));
                pane.screen.appear();
                expectLook(pane, stateOf(settingsOf(to), device));
            }
        }
    }
}

}  // namespace
}  // namespace pages_test
