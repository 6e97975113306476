// SPDX-License-Identifier: MIT
#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const char* const rootFooter =
    "Merge Multitasking and Control Center. Access by sliding up from the bottom. Slide an app preview down to expand "
    "it. Slide the Home Screen preview up to close all apps.";
const char* const switcherFooter =
    "Pull up from the bottom left corner of the screen to access, then release your finger on the app you want to "
    "switch to.";
const char* const cornersFooter = "Return to the Home Screen by swiping up from the bottom right corner of the screen.";

json switchRow(const char* label, const char* key, const char* icon) {
    return {{"label", label},  {"kind", "switch"}, {"identifier", key}, {"key", nullptr}, {"value", nullptr},
            {"enabled", true}, {"checked", false}, {"on", true},        {"icon", icon}};
}

json linkRow(const char* label, const char* icon) {
    return {{"label", label},  {"kind", "link"},   {"identifier", nullptr}, {"key", nullptr}, {"value", nullptr},
            {"enabled", true}, {"checked", false}, {"on", nullptr},         {"icon", icon}};
}

json section(const json& footer, const json& row) {
    return {{"header", nullptr}, {"footer", footer}, {"rows", json::array({row})}};
}

struct Show : testing::Test {
    Show() { ctl.usePhone(phone.folder); }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(Show, rootPageIsWholeAsJson) {
    const json expected = {{"class", "KavixPreferencesController"},
                           {"title", "Trivel 3"},
                           {"sections",
                            {section(rootFooter, switchRow("Multi-Center", "MultiCenter", "Multi-Center")),
                             section(switcherFooter, switchRow("Quick Switcher", "QuickSwitcher", "QuickSwitcher")),
                             section(cornersFooter, switchRow("Hot Corners", "HotCorners", "HotCorners")),
                             section(nullptr, linkRow("Advanced Options", "Configuration")),
                             section(nullptr, linkRow("The Creators", "Creators")),
                             section(nullptr, linkRow("Fenwary Support", "Support"))}}};
    const Outcome outcome = ctl.run({"show", "--json"});
    expectDone(outcome);
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 1);
    EXPECT_EQ(json::parse(outcome.output), expected);
}

TEST_F(Show, pageIsTheOneThatDriveAnswersWith) {
    Drive drive(ctl);
    EXPECT_EQ(ctl.runForJson({"show", "--json"}), drive.show().at("page"));
    EXPECT_EQ(ctl.runForJson({"show", "Advanced Options", "--json"}), drive.tap("Advanced Options").at("page"));
}

TEST_F(Show, settingsOfTheFileAreShown) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"MultiCenter", "<integer>0</integer>"}}));
    const json page = ctl.runForJson({"show", "--json"});
    EXPECT_EQ(page.at("sections").at(0).at("rows").at(0).at("on"), false);
    EXPECT_EQ(page.at("sections").at(1).at("rows").at(0).at("on"), true);
    EXPECT_EQ(page.at("sections").at(2).at("rows").at(0).at("on"), false);
    EXPECT_THAT(page.at("sections").at(2).at("footer").get<std::string>(), HasSubstr("right or left corners"));
}

TEST_F(Show, titlesLeadToAPage) {
    EXPECT_EQ(ctl.runForJson({"show", "Advanced Options", "--json"}).at("title"), "Advanced Options");
    EXPECT_EQ(ctl.runForJson({"show", "Advanced Options/Slider Actions", "--json"}).at("class"),
              "KavixPreferencesSliderActionsController");
    EXPECT_EQ(ctl.runForJson({"show", "", "--json"}).at("title"), "Trivel 3");
}

TEST_F(Show, slashesAroundThePathMeanNothing) {
    EXPECT_EQ(ctl.runForJson({"show", "/Advanced Options/", "--json"}).at("title"), "Advanced Options");
    EXPECT_EQ(ctl.runForJson({"show", "/", "--json"}).at("title"), "Trivel 3");
}

// What a page holds can be asked for before the setting is made that lets a finger get there.
TEST_F(Show, pageIsShownThoughTheLinkToItIsGreyed) {
    const json options = ctl.runForJson({"show", "Advanced Options", "--json"});
    ASSERT_EQ(rowLabelled({{"page", options}}, "Quick Launcher").at("enabled"), false);

    EXPECT_EQ(ctl.runForJson({"show", "Advanced Options/Quick Launcher", "--json"}).at("class"),
              "KavixPreferencesQuickLauncherController");
}

TEST_F(Show, titleThatLeadsNowhereIsAFailureThatNamesTheNearest) {
    expectFailure(ctl.run({"show", "Advanced Option"}), 1,
                  "'Trivel 3' leads to no page 'Advanced Option'; did you mean 'Advanced Options'?");
    expectFailure(ctl.run({"show", "Advanced Options/Slidder Actions"}), 1,
                  "'Advanced Options' leads to no page 'Slidder Actions'; did you mean 'Slider Actions'?");
    expectFailure(ctl.run({"show", "Advanced Options/Slider Actions/More/Still more"}), 1,
                  "'Slider Actions' leads to no page 'More'");
}

TEST_F(Show, titleOfAPageThatLiesElsewhereIsAFailureThatNamesTheWayThere) {
    expectFailure(ctl.run({"show", "Slider Actions"}), 1,
                  "'Trivel 3' leads to no page 'Slider Actions'; did you mean 'Advanced Options/Slider Actions'?");
}

TEST_F(Show, titleOfARowThatIsNoLinkLeadsNowhere) {
    expectFailure(ctl.run({"show", "Multi-Center"}), 1, "leads to no page 'Multi-Center'");
    expectFailure(ctl.run({"show", "Fenwary Support"}), 1, "leads to no page 'Fenwary Support'");
}

// The page repairs what contradicts itself, but to look at a page must not change the phone.
TEST_F(Show, nothingIsWrittenToThePhone) {
    const std::string contradictory =
        settingsOf({{"MultiCenter", "<false/>"}, {"ReachabilityMode", "<true/>"}, {"Mine", "<integer>1</integer>"}});
    writeSettings(phone, contradictory);
    Trivel3ctl driven;
    Phone twin;
    writeSettings(twin, contradictory);
    driven.usePhone(twin.folder);
    Drive drive(driven);
    const json repaired = drive.tap("Advanced Options");
    ASSERT_FALSE(eventsOf(repaired, "write").empty());

    const json shown = ctl.runForJson({"show", "Advanced Options", "--json"});

    EXPECT_EQ(shown, repaired.at("page"));
    EXPECT_EQ(readSettings(phone), contradictory);
    EXPECT_THAT(namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

TEST_F(Show, choiceRowsTellTheirKeyAndValue) {
    writeSettings(phone, settingsOf({{"SliderActionsVolume", "<integer>1</integer>"}}));
    const json page = ctl.runForJson({"show", "Advanced Options/Slider Actions", "--json"});
    const json expected = {{"label", "Set Volume to Maximum"},
                           {"kind", "item"},
                           {"identifier", nullptr},
                           {"key", "SliderActionsVolume"},
                           {"value", 1},
                           {"enabled", true},
                           {"checked", true},
                           {"on", nullptr},
                           {"icon", false}};
    EXPECT_EQ(page.at("sections").at(1).at("header"), "Tap Volume Icon to:");
    EXPECT_EQ(page.at("sections").at(1).at("rows").at(2), expected);
    EXPECT_EQ(page.at("sections").at(1).at("rows").at(0).at("checked"), false);
}

}  // namespace
}  // namespace terminal_test
