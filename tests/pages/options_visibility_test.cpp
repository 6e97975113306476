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

constexpr auto minimalFooter = "Hides AirDrop/AirPlay and Track-Seeker.";
constexpr auto withinReachFooter = "Slide up on playback area to dynamically switch between minimal display at will.";
constexpr auto quickSwitcherCorners =
    "Access the Quick Switcher from the right corner, and the Home Screen from the left.";
constexpr auto appSwitcherCorners = "Access the App Switcher from the right corner, and the Home Screen from the left.";

const Labels conditions = {"Always", "If no Media is Playing", "If AirPlay is undetected", "If AirDrop is Off"};

KavixPreferencesOptionsController& options(Pane& pane) {
    return pane.screen.pageAs<KavixPreferencesOptionsController>();
}

std::optional<std::string> footerAbove(const Pane& pane, std::string_view label) {
    return pane.screen.footers().at(pane.screen.pathOf(label).section);
}

/// The redraws of the rows that are greyed or made usable when the page first appears, all rows
/// being there still.
Events firstReloads() {
    const std::pair<const char*, std::size_t> rows[] = {
        {"Reachable Display", 1},         {"Minimal Display", 3},          {"Always", 4},
        {"If no Media is Playing", 5},    {"If AirPlay is undetected", 6}, {"If AirDrop is Off", 7},
        {"Open to Last App", 9},          {"Apply to Quick Switcher", 10}, {"Quick Launcher", 12},
        {"Slider Actions", 14},           {"Album Artwork", 16},           {"Close All Apps", 18},
        {"Unlimited Quick Switcher", 20}, {"Access Home Screen", 22},      {"Access App Switcher", 24},
        {"Invert Hot Corners", 26},       {"Disable in Applications", 28}, {"Move Recent Contacts to NC", 30},
    };
    Events events;
    for (const auto& [label, position] : rows)
        events.push_back(event::reload(label, position, atOnce));
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
    EXPECT_THAT(
        pane.screen.labels(),
        ElementsAre("Reachable Display", "Minimal Display", "Always", "If no Media is Playing",
                    "If AirPlay is undetected", "If AirDrop is Off", "Open to Last App", "Quick Launcher",
                    "Slider Actions", "Album Artwork", "Close All Apps", "Unlimited Quick Switcher",
                    "Access Home Screen", "Access App Switcher", "Invert Hot Corners", "Disable in Applications",
                    "Move Recent Contacts to NC", "Disable Double-Click Home", "Ostrel"));
    EXPECT_THAT(pane.screen.greyedLabels(),
                ElementsAre("If AirPlay is undetected", "If AirDrop is Off", "Quick Launcher", "Access App Switcher"));
    EXPECT_EQ(footerAbove(pane, "Minimal Display"), withinReachFooter);
    EXPECT_EQ(footerAbove(pane, "Invert Hot Corners"), quickSwitcherCorners);
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

TEST(OptionsOnATablet, keepsWhatATabletHasAUseFor) {
    Pane pane(kit::tablet);
    pane.setFile({{"OpenToLastApp", true}});
    auto& page = pane.openQuietly(optionsPage);
    EXPECT_THAT(pane.screen.labels(),
                ElementsAre("Open to Last App", "Apply to Quick Switcher", "Album Artwork", "Close All Apps",
                            "Access Home Screen", "Access App Switcher", "Invert Hot Corners",
                            "Disable in Applications", "Disable Double-Click Home", "Ostrel"));
    EXPECT_EQ(page.numberOfSectionsInTableView(page.table()), 9u);
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
    const auto labels = pane.screen.labels();
    EXPECT_TRUE(pane.screen.moveSwitch("Minimal Display", false));
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), settingsWritten(), settingsChanged(),
                            event::reload("Always", 4, withAnimation),
                            event::reload("If no Media is Playing", 5, withAnimation),
                            event::reload("Quick Launcher", 11, withAnimation),
                            event::remove(conditions, 4, withAnimation), event::reload("", 2, withAnimation)));
    EXPECT_EQ(footerAbove(pane, "Minimal Display"), minimalFooter);
    for (const auto& label : conditions)
        EXPECT_THAT(pane.screen.labels(), Not(Contains(label)));

    EXPECT_TRUE(pane.screen.moveSwitch("Minimal Display", true));
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), settingsWritten(), settingsChanged(),
                            settingsWritten(), settingsChanged(), event::reload("Quick Launcher", 7, withAnimation),
                            event::insert(conditions, 4, withAnimation), event::reload("", 2, withAnimation)));
    EXPECT_EQ(pane.screen.labels(), labels);
    EXPECT_EQ(footerAbove(pane, "Minimal Display"), withinReachFooter);
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

TEST(OptionsPage, explainsTheCornersByTheQuickSwitcher) {
    Pane pane;
    pane.setFile({{"QuickSwitcher", false}});
    pane.openQuietly(optionsPage);
    EXPECT_EQ(footerAbove(pane, "Invert Hot Corners"), appSwitcherCorners);
    pane.setInFile("QuickSwitcher", true);
    pane.screen.appear();
    EXPECT_EQ(footerAbove(pane, "Invert Hot Corners"), quickSwitcherCorners);
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

// Every combination of the settings, against the rules said anew.

struct Settings {
    bool multiCenter, quickSwitcher, hotCorners, minimal, reachable, opensToLastApp;

    explicit Settings(unsigned bits)
        : multiCenter(bits & 1),
          quickSwitcher(bits & 2),
          hotCorners(bits & 4),
          minimal(bits & 8),
          reachable(bits & 16),
          opensToLastApp(bits & 32) {}

    platform::Dictionary file() const {
        return {{"MultiCenter", multiCenter},
                {"QuickSwitcher", quickSwitcher},
                {"HotCorners", hotCorners},
                {"MinimalControlCenterEnabled", minimal},
                {"ReachabilityMode", reachable},
                {"OpenToLastApp", opensToLastApp},
                {"MinimalControlCenterCondition", 7},
                {"AccessAppSwitcher", true},
                {"PeopleInToday", true}};
    }
};

struct ExpectedLook {
    Labels shown;
    Labels greyed;

    void add(const std::string& label, bool enabled) {
        shown.push_back(label);
        if (!enabled) greyed.push_back(label);
    }
};

void addDisplayRows(ExpectedLook& look, const Settings& s) {
    look.add("Reachable Display", s.multiCenter);
    look.add("Minimal Display", s.multiCenter);
    if (!s.minimal) return;
    look.add("Always", s.multiCenter);
    look.add("If no Media is Playing", s.multiCenter);
    look.add("If AirPlay is undetected", s.multiCenter && !s.reachable);
    look.add("If AirDrop is Off", s.multiCenter && !s.reachable);
}

ExpectedLook expectedLook(const Settings& s, bool phone, bool tall) {
    const bool any = s.multiCenter || s.quickSwitcher || s.hotCorners;
    ExpectedLook look;
    if (tall) addDisplayRows(look, s);
    look.add("Open to Last App", any);
    if (s.opensToLastApp) look.add("Apply to Quick Switcher", any);
    if (phone) look.add("Quick Launcher", s.multiCenter && !(tall && s.minimal && s.reachable));
    if (phone) look.add("Slider Actions", s.multiCenter);
    look.add("Album Artwork", s.multiCenter);
    look.add("Close All Apps", s.multiCenter);
    if (phone) look.add("Unlimited Quick Switcher", s.quickSwitcher);
    look.add("Access Home Screen", s.quickSwitcher);
    look.add("Access App Switcher", s.quickSwitcher && !s.multiCenter);
    look.add("Invert Hot Corners", s.hotCorners);
    look.add("Disable in Applications", any);
    if (phone) look.add("Move Recent Contacts to NC", s.multiCenter);
    look.add("Disable Double-Click Home", true);
    look.add("Ostrel", true);
    return look;
}

void expectSettings(const Pane& pane, const Settings& s, bool tall) {
    EXPECT_EQ(pane.stored("AccessAppSwitcher"), platform::Value(!(s.quickSwitcher && s.multiCenter)));
    EXPECT_EQ(pane.stored("MinimalControlCenterCondition"), platform::Value(tall && s.minimal && s.reachable ? 1 : 7));
    EXPECT_EQ(pane.stored("PeopleInToday"), platform::Value(s.multiCenter));
}

struct DeviceClass {
    kit::Shape shape;
    bool phone;
    bool tall;
};

constexpr DeviceClass devices[] = {
    {kit::tallPhone, true, true}, {kit::shortPhone, true, false}, {kit::tablet, false, false}};

void expectLook(const Pane& pane, const Settings& s, const DeviceClass& device) {
    const ExpectedLook look = expectedLook(s, device.phone, device.tall);
    EXPECT_EQ(pane.screen.labels(), look.shown);
    EXPECT_EQ(pane.screen.greyedLabels(), look.greyed);
    if (device.tall) {
        EXPECT_EQ(footerAbove(pane, "Minimal Display"), s.minimal && s.reachable ? withinReachFooter : minimalFooter);
    }
    EXPECT_EQ(footerAbove(pane, "Invert Hot Corners"), s.quickSwitcher ? quickSwitcherCorners : appSwitcherCorners);
}

TEST(OptionsByRule, looksRightForEverySettingOnEveryDevice) {
    for (const DeviceClass& device : devices) {
        for (unsigned bits = 0; bits < 64; ++bits) {
            SCOPED_TRACE(testing::Message() << "height " << device.shape.height << ", settings " << bits);
            const Settings settings(bits);
            Pane pane(device.shape);
            pane.setFile(settings.file());
            pane.openQuietly(optionsPage);
            expectSettings(pane, settings, device.tall);
            expectLook(pane, settings, device);
        }
    }
}

TEST(OptionsByRule, getsFromAnyLookToAnyOther) {
    for (const DeviceClass& device : devices) {
        Pane pane(device.shape);
        pane.openQuietly(optionsPage);
        for (unsigned from = 0; from < 64; ++from) {
            for (unsigned to = 0; to < 64; to += 5) {
                SCOPED_TRACE(testing::Message()
                             << "height " << device.shape.height << ", settings " << from << " to " << to);
                pane.setFile(Settings(from).file());
                pane.screen.appear();
                pane.setFile(Settings(to).file());
                pane.screen.appear();
                expectLook(pane, Settings(to), device);
            }
        }
    }
}

}  // namespace
}  // namespace pages_test
