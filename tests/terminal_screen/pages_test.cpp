// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>

#include "hosts/session/printable.h"
#include "tests/terminal_screen/opened_screen.h"

namespace terminal_screen_test {
namespace {

using platform::Dictionary;
using platform::Value;
using testing::HasSubstr;
using testing::Not;

const TmuxTerminal::Setup smallest{.width = 40, .height = 12};

TEST(Screen, opensOnTheRootPage) {
    OpenedScreen screen;
    const std::string text = screen.terminal.text();
    EXPECT_THAT(screen.terminal.lines().front(), HasSubstr("Trivel 3"));
    EXPECT_THAT(text, HasSubstr("by Movane and Daxon"));
    EXPECT_THAT(text, HasSubstr("Merge Multitasking and Control Center."));
    EXPECT_THAT(screen.terminal.rowWith("Multi-Center  "), HasSubstr("on ━━●"));
    EXPECT_THAT(screen.terminal.rowWith("Advanced Options"), HasSubstr("›"));
    EXPECT_THAT(screen.terminal.rowWith("▸"), HasSubstr("Multi-Center"));
}

// A feature page's title, and something that only it shows.
struct Page {
    const char* title;
    const char* content;
};

constexpr Page featurePages[] = {
    {"Quick Launcher", "Do Not Display"}, {"Slider Actions", "Toggle Auto-Brightness"}, {"Album Artwork", "On Play"},
    {"Close All Apps", "Camera"},         {"Disable in Applications", "Maps"},
};

// With these settings no link of the advanced options is greyed.
Dictionary allLinksBright() {
    Dictionary settings;
    settings.set("MinimalControlCenterEnabled", Value(false));
    return settings;
}

TEST(Screen, opensEveryFeaturePageAndGoesBack) {
    OpenedScreen screen({}, allLinksBright());
    ASSERT_TRUE(screen.open("Advanced Options"));
    for (const Page& page : featurePages) {
        ASSERT_TRUE(screen.open(page.title)) << screen.terminal.text();
        EXPECT_THAT(screen.terminal.lines().front(), HasSubstr("‹ Advanced Options"));
        EXPECT_THAT(screen.terminal.text(), HasSubstr(page.content)) << page.title;
        screen.terminal.press({"Left"});
        ASSERT_TRUE(screen.terminal.waitFor("‹ Trivel 3"));
        EXPECT_TRUE(screen.terminal.waitForRow("▸", page.title));
    }
}

struct ReportOnTheScreen {
    explicit ReportOnTheScreen(const TmuxTerminal::Setup& setup) : terminal({TEST_PROGRAM, "--phone", file}, setup) {
        terminal.waitFor("Quit");
        terminal.settle();
    }
    static std::string written(const std::string& path) {
        kit::writeText(path,
                       "<plist><dict><key>Packages</key><string>p</string><key>ProductType</key>"
                       "<string>iPhone6,1</string><key>Preferences</key><dict/></dict></plist>");
        return path;
    }

    kit::TemporaryFolder folder;
    std::string file = written(folder / "Trivel.plist");
    TmuxTerminal terminal;
};

TEST(Screen, saysOnEveryPageThatItIsOfASupportReport) {
    ReportOnTheScreen screen({});
    constexpr const char* words = " Support report: changes are tries; it has ticked applications, no exceptions";
    EXPECT_EQ(screen.terminal.lines().at(22), words);
    EXPECT_THAT(screen.terminal.lines().at(23), HasSubstr("Quit"));
    screen.terminal.press({"End", "Up", "Enter"});
    ASSERT_TRUE(screen.terminal.waitFor("‹ Trivel 3"));
    EXPECT_EQ(screen.terminal.lines().at(22), words);
}

TEST(Screen, ofASupportReportSaysSoInTwoLinesOfTheSmallestTerminal) {
    ReportOnTheScreen screen(smallest);
    EXPECT_EQ(screen.terminal.lines().at(9), " Support report: changes are tries; it");
    EXPECT_EQ(screen.terminal.lines().at(10), " has ticked applications, no exceptions");
    EXPECT_THAT(screen.terminal.rowWith("▸"), HasSubstr("Multi-Center"));
}

TEST(Screen, ofASupportReportTakesTriesBack) {
    ReportOnTheScreen screen({});
    screen.terminal.press({"Enter"});
    ASSERT_TRUE(screen.terminal.waitForRow("▸", "off"));
    screen.terminal.press({"u"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "on ━━●"));
    EXPECT_TRUE(screen.terminal.waitFor("Undone: MultiCenter"));
    EXPECT_TRUE(screen.terminal.waitFor("Support report: changes are tries"));
}

TEST(Screen, showsTheCreatorsWithWhatTheirCellsTell) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("The Creators"));
    EXPECT_THAT(screen.terminal.text(), HasSubstr("Daxon (@Daxon_QT)"));
    EXPECT_THAT(screen.terminal.text(), HasSubstr("Trivel 3, Ostrel, Quill, Tern,"));
    EXPECT_THAT(screen.terminal.rowWith("Follow Fenwary"), HasSubstr("›"));
}

TEST(Screen, callsTheCreatorsByTheirNamesHoweverOftenTheirRowsAreDrawnAnew) {
    OpenedScreen screen;
    screen.terminal.installProgram("xdg-open",
                                   "echo \"$1\" > \"$HOME/opened.new\"; mv \"$HOME/opened.new\" \"$HOME/opened\"");
    ASSERT_TRUE(screen.open("The Creators"));
    const std::vector<std::string> before = screen.terminal.lines();
    for (int change = 0; change < 4; ++change) {
        screen.phone.store("HotCorners", Value(change % 2 == 0));
        screen.terminal.press({"r"});
        ASSERT_TRUE(screen.terminal.waitFor("Loaded again"));
        screen.terminal.press({"Down", "Home"});
        ASSERT_TRUE(screen.terminal.waitUntilGone("Loaded again"));
        screen.terminal.settle();
        EXPECT_EQ(screen.terminal.lines(), before);
    }
    EXPECT_THAT(screen.terminal.rowWith("▸"), HasSubstr("Daxon (@Daxon_QT)"));
    EXPECT_THAT(screen.terminal.text(), HasSubstr("Founder of Fenwary."));
    screen.terminal.press({"Enter"});
    EXPECT_EQ(screen.terminal.waitForFile("opened"), "https://twitter.com/Daxon_QT");
}

TEST(Screen, movesSwitchesAndShowsWhatFollowsFromThem) {
    OpenedScreen screen;
    ASSERT_THAT(screen.terminal.text(), Not(HasSubstr("pull up further")));
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitForRow("Multi-Center  ", "off ●──"));
    EXPECT_EQ(screen.phone.stored("MultiCenter"), Value(false));
    EXPECT_THAT(screen.terminal.text(), HasSubstr("pull up further"));
    screen.terminal.press({"Enter"});
    EXPECT_TRUE(screen.terminal.waitForRow("Multi-Center  ", "on ━━●"));
    EXPECT_EQ(screen.phone.stored("MultiCenter"), Value(true));
}

TEST(Screen, takesOutAndBringsBackDependentRows) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("Advanced Options"));
    ASSERT_TRUE(screen.terminal.waitFor("If AirDrop is Off"));
    screen.find("Minimal Display");
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitUntilGone("If AirDrop is Off"));
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Minimal Display"));
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitFor("If AirDrop is Off"));
}

TEST(Screen, movesTheCheckmarkToTheChosenRow) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("Advanced Options"));
    ASSERT_TRUE(screen.open("Slider Actions"));
    ASSERT_THAT(screen.terminal.rowWith("Toggle Auto-Brightness"), HasSubstr("✓"));
    screen.find("Set Brightness to Minimum");
    screen.terminal.press({"Enter"});
    EXPECT_TRUE(screen.terminal.waitForRow("Set Brightness to Minimum", "✓"));
    EXPECT_THAT(screen.terminal.rowWith("Toggle Auto-Brightness"), Not(HasSubstr("✓")));
    EXPECT_EQ(screen.phone.stored("SliderActionsBrightness"), Value(0));
}

TEST(Screen, marksRowsThatAreNotAtTheirDefaults) {
    OpenedScreen screen({}, Dictionary{{"QuickSwitcher", Value(true)}, {"HotCorners", Value(false)}});
    EXPECT_THAT(screen.terminal.rowWith("Hot Corners"), HasSubstr("•  Hot Corners"));
    EXPECT_THAT(screen.terminal.rowWith("Multi-Center  "), Not(HasSubstr("•")));
    EXPECT_THAT(screen.terminal.rowWith("Quick Switcher"), Not(HasSubstr("•"))) << "stored, as it is by default";
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitForRow("Multi-Center  ", "•"));
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitForRow("Multi-Center  ", "on ━━●"));
    EXPECT_THAT(screen.terminal.rowWith("Multi-Center  "), Not(HasSubstr("•")));
    ASSERT_TRUE(screen.open("Advanced Options"));
    ASSERT_TRUE(screen.open("Slider Actions"));
    screen.find("Set Volume to Minimum");
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitForRow("Set Volume to Minimum", "•✓"));
    EXPECT_THAT(screen.terminal.rowWith("Switch to Ringer Volume"), Not(HasSubstr("•")));
}

TEST(Screen, undoesTurnByTurnAndDoesThemAgain) {
    OpenedScreen screen;
    screen.terminal.press({"Space"});
    ASSERT_TRUE(screen.terminal.waitForRow("Multi-Center  ", "off ●──"));
    screen.find("Hot Corners");
    screen.terminal.press({"Space"});
    ASSERT_TRUE(screen.terminal.waitForRow("Hot Corners  ", "off ●──"));
    screen.terminal.press({"u"});
    EXPECT_TRUE(screen.terminal.waitFor("Undone: HotCorners"));
    EXPECT_TRUE(screen.terminal.waitForRow("Hot Corners  ", "on ━━●"));
    screen.terminal.press({"u"});
    EXPECT_TRUE(screen.terminal.waitFor("Undone: MultiCenter"));
    EXPECT_TRUE(screen.terminal.waitForRow("Multi-Center  ", "on ━━●"));
    EXPECT_EQ(screen.phone.stored("MultiCenter"), std::nullopt);
    EXPECT_THAT(screen.terminal.text(), Not(HasSubstr("pull up further"))) << "the footer follows the switch";
    screen.terminal.press({"u"});
    EXPECT_TRUE(screen.terminal.waitFor("Not undone: there is nothing to undo"));
    screen.terminal.press({"U"});
    EXPECT_TRUE(screen.terminal.waitFor("Done again: MultiCenter"));
    screen.terminal.press({"U"});
    EXPECT_TRUE(screen.terminal.waitFor("Done again: HotCorners"));
    EXPECT_TRUE(screen.terminal.waitForRow("Hot Corners  ", "off ●──"));
    EXPECT_EQ(screen.phone.stored("HotCorners"), Value(false));
}

TEST(Screen, resetsARowAndUndoesThat) {
    OpenedScreen screen({}, Dictionary{{"HotCorners", Value(false)}, {"Mine", Value(1)}});
    screen.find("Hot Corners");
    screen.terminal.press({"R"});
    EXPECT_TRUE(screen.terminal.waitFor("Reset “Hot Corners”. u undoes it"));
    EXPECT_TRUE(screen.terminal.waitForRow("Hot Corners  ", "on ━━●"));
    EXPECT_THAT(screen.terminal.rowWith("Hot Corners  "), Not(HasSubstr("•")));
    EXPECT_EQ(screen.phone.stored("HotCorners"), Value(true));
    EXPECT_EQ(screen.phone.stored("Mine"), Value(1));
    screen.terminal.press({"R"});
    EXPECT_TRUE(screen.terminal.waitFor("“Hot Corners” is at its default already."));
    screen.terminal.press({"u"});
    EXPECT_TRUE(screen.terminal.waitForRow("Hot Corners  ", "off ●──"));
    EXPECT_EQ(screen.phone.stored("HotCorners"), Value(false));
    screen.find("The Creators");
    screen.terminal.press({"R"});
    EXPECT_TRUE(screen.terminal.waitFor("This row has no default to go back to"));
}

TEST(Screen, undoesNothingThatAnotherProgramHasChangedSince) {
    OpenedScreen screen;
    screen.terminal.press({"Space"});
    ASSERT_TRUE(screen.phone.waitForStored("MultiCenter", Value(false)));
    screen.phone.store("MultiCenter", Value(7));
    screen.terminal.press({"u"});
    EXPECT_TRUE(screen.terminal.waitFor("Not undone: 'MultiCenter' has been changed since change 1"));
    EXPECT_EQ(screen.phone.stored("MultiCenter"), Value(7));
}

// A page in view, which has a repair for what another program has set.
TEST(Screen, showsWhatFollowsFromAnotherProgramsChangeAndWritesNothing) {
    Dictionary settings;
    settings.set("AccessAppSwitcher", Value(false));
    settings.set("PeopleInToday", Value(true));
    OpenedScreen screen({.height = 60}, settings);
    ASSERT_TRUE(screen.open("Advanced Options"));
    ASSERT_THAT(screen.terminal.rowWith("Minimal Display"), Not(HasSubstr("(greyed)")));
    screen.phone.store("MultiCenter", Value(false));
    EXPECT_TRUE(screen.terminal.waitForRow("Minimal Display", "(greyed)"));
    EXPECT_EQ(screen.phone.stored("PeopleInToday"), Value(true));
    screen.phone.store("MultiCenter", Value(true));
    EXPECT_TRUE(
        screen.terminal.waitUntilGone("Minimal Display                                                      (greyed)"));
    EXPECT_EQ(screen.phone.stored("PeopleInToday"), Value(true));
}

// Each has a repair for what a third program sets.
TEST(Screen, leavesTheFileToWhoeverChangesItWhereTwoLook) {
    Dictionary settings;
    settings.set("AccessAppSwitcher", Value(false));
    settings.set("PeopleInToday", Value(true));
    const TmuxTerminal::Setup tall{.height = 60};
    OpenedScreen one(tall, settings);
    ASSERT_TRUE(one.open("Advanced Options"));
    TmuxTerminal other(program(one.phone), tall);
    ASSERT_TRUE(other.waitFor("Quit"));
    other.press({"/"});
    other.type("Advanced Options");
    other.press({"Enter", "Enter"});
    ASSERT_TRUE(other.waitFor("Minimal Display"));
    const auto content = [&] { return kit::readText(one.phone.machinePath(settingsFile)); };
    for (const bool multiCenter : {false, true, false, true}) {
        one.phone.store("MultiCenter", Value(multiCenter));
        const std::string written = content();
        const auto shows = [multiCenter](const TmuxTerminal& terminal) {
            return multiCenter ? terminal.waitForRow("Minimal Display", "━━●")
                               : terminal.waitForRow("Minimal Display", "greyed");
        };
        EXPECT_TRUE(shows(one.terminal));
        EXPECT_TRUE(shows(other));
        EXPECT_EQ(content(), written);
    }
    other.press({"q"});
    EXPECT_EQ(other.waitForEnd(), 0);
}

TEST(Screen, ticksApplications) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("Advanced Options"));
    ASSERT_TRUE(screen.open("Close All Apps"));
    screen.find("Camera");
    ASSERT_TRUE(screen.terminal.waitForRow("▸", "Camera"));
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitForRow("Camera", "✓"));
    EXPECT_TRUE(screen.phone.stored("CloseAllAppsExceptions").has_value());
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitForRow("Camera", "▸   Camera"));
}

TEST(Screen, leavesGreyedRowsAlone) {
    // This row has no repair of the page's to hide a write.
    Dictionary settings;
    settings.set("HotCorners", Value(false));
    OpenedScreen screen({.height = 60}, settings);
    ASSERT_TRUE(screen.open("Advanced Options"));
    screen.find("Quick Launcher");
    ASSERT_TRUE(screen.terminal.waitForRow("▸", "Quick Launcher"));
    ASSERT_THAT(screen.terminal.rowWith("Quick Launcher"), HasSubstr("(greyed)"));
    screen.terminal.press({"Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("This row is greyed"));
    EXPECT_THAT(screen.terminal.lines().front(), HasSubstr("Advanced Options"));
    screen.find("Invert Hot Corners");
    screen.terminal.press({"Space"});
    // The cursor moves once the key before has been dealt with.
    screen.find("Reachable Display");
    ASSERT_TRUE(screen.terminal.waitForRow("▸", "Reachable Display"));
    EXPECT_THAT(screen.terminal.rowWith("Invert Hot Corners"), HasSubstr("(greyed) off"));
    EXPECT_EQ(screen.phone.stored("InvertHotCorners"), std::nullopt);
}

TEST(Screen, goesBackByEscapeAndBackspaceAndStaysOnTheFirstPage) {
    OpenedScreen screen;
    for (const char* key : {"Escape", "BSpace"}) {
        ASSERT_TRUE(screen.open("The Creators"));
        screen.terminal.press({key});
        EXPECT_TRUE(screen.terminal.waitForRow("▸", "The Creators")) << key;
    }
    screen.terminal.press({"Left"});
    EXPECT_TRUE(screen.terminal.waitFor("This is the first page"));
}

TEST(Screen, entersByRightWhatLeadsOnAndNothingElse) {
    OpenedScreen screen;
    screen.terminal.press({"Right"});
    screen.find("Advanced Options");
    EXPECT_EQ(screen.phone.stored("MultiCenter"), std::nullopt);
    screen.terminal.press({"Right"});
    ASSERT_TRUE(screen.terminal.waitFor("‹ Trivel 3"));
    screen.find("Quick Launcher");
    screen.terminal.press({"Right"});
    EXPECT_TRUE(screen.terminal.waitFor("This row is greyed"));
    screen.terminal.press({"Left"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Advanced Options"));
}

TEST(Screen, leavesNothingOverOfJoinedEmoji) {
    // Columns are counted as the terminal counts them.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    Phone phone;
    for (int number = 0; number < 30; ++number) {
        const std::string name = "App " + std::to_string(number);
        phone.put(
            "/Applications/" + name + ".app/Info.plist",
            {{"CFBundleIdentifier", "a." + std::to_string(100 + number)},
             {"CFBundleDisplayName", number == 5 ? "👨‍👩‍👧‍👦 Family 👩🏽‍🚀 ❤️" : name}});
    }
    TmuxTerminal terminal(program(phone), {});
    ASSERT_TRUE(terminal.waitFor("Multi-Center"));
    for (const char* title : {"Advanced Options", "Disable in Applications"}) {
        terminal.press({"/"});
        terminal.type(title);
        ASSERT_TRUE(terminal.waitForRow("▸", title));
        terminal.press({"Enter"});
        ASSERT_TRUE(terminal.waitFor("Reload"));
        terminal.press({"Right"});
    }
    ASSERT_TRUE(terminal.waitFor("Family"));
    terminal.settle();
    const std::vector<std::string> before = terminal.lines();
    // The scroll bar stands at the right edge of each line of the page.
    for (std::size_t line = 1; line + 1 < before.size(); ++line)
        EXPECT_EQ(hosts::columns(before[line]), 80) << before[line];
    terminal.press({"Down", "Down", "Down", "Down", "Down", "Down", "Down", "End"});
    ASSERT_TRUE(terminal.waitUntilGone("Family"));
    terminal.settle();
    for (const std::string& line : terminal.lines())
        EXPECT_LE(hosts::columns(line), 80) << line;
    terminal.press({"Home"});
    ASSERT_TRUE(terminal.waitFor("Family"));
    terminal.settle();
    EXPECT_EQ(terminal.lines(), before);
    terminal.press({"q"});
    EXPECT_EQ(terminal.waitForEnd(), 0);
}

TEST(Screen, showsChangesOfOtherProcessesInTheRowsThatAreSeen) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("Advanced Options"));
    ASSERT_THAT(screen.terminal.rowWith("Reachable Display"), HasSubstr("on ━━●"));
    screen.phone.store("ReachabilityMode", Value(false));
    EXPECT_TRUE(screen.terminal.waitForRow("Reachable Display", "off ●──"));
}

TEST(Screen, saysWhenASettingCouldNotBeSaved) {
    OpenedScreen screen;
    std::filesystem::create_directories(std::filesystem::path(screen.phone.machinePath(settingsFile)) / "in-the-way");
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitFor("Not saved:"));
    EXPECT_THAT(screen.terminal.rowWith("Multi-Center  "), HasSubstr("on ━━●"));
}

TEST(Screen, saysThatThePhoneIsGoneAndStands) {
    OpenedScreen screen;
    const std::string folder = screen.phone.folder();
    std::filesystem::remove_all(folder);
    EXPECT_TRUE(screen.terminal.waitFor("The phone is gone: "));
    EXPECT_THAT(screen.terminal.text(), HasSubstr("Multi-Center"));

    screen.terminal.press({"Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("Not saved: cannot write"));
    EXPECT_TRUE(screen.terminal.waitForRow("Multi-Center  ", "on ━━●"));
    EXPECT_FALSE(std::filesystem::exists(folder));

    screen.terminal.press({"Down", "r"});
    EXPECT_TRUE(screen.terminal.waitFor("These are defaults: cannot read"));
}

TEST(Screen, saysThatAnEmptyFolderHeldNoPhone) {
    OpenedScreen screen;
    const std::string empty = screen.phone.folder() + "/empty";
    std::filesystem::create_directory(empty);
    TmuxTerminal terminal({TEST_PROGRAM, "--phone", empty}, {});
    EXPECT_TRUE(terminal.waitFor("it held no phone"));
    EXPECT_TRUE(terminal.waitFor("Multi-Center"));
}

TEST(Screen, fitsTheSmallestTerminal) {
    OpenedScreen screen(smallest);
    EXPECT_THAT(screen.terminal.rowWith("Multi-Center  "), HasSubstr("on ━━●"));
    ASSERT_TRUE(screen.open("Advanced Options"));
    screen.terminal.press({"End"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Ostrel"));
    ASSERT_TRUE(screen.open("Minimal Display", "Advanced Options"));
    EXPECT_EQ(screen.phone.stored("MinimalControlCenterEnabled"), Value(false));
}

// What the terminal is sent, not what it makes of it.
TEST(Screen, sendsTheTerminalNothingThatThePhoneMadeUp) {
    Phone phone;
    Dictionary info;
    info.set("CFBundleIdentifier", Value("com.example.evil"));
    info.set("CFBundleDisplayName", Value("Evil\x1b]0;owned\x07\x1b[2Jx\u009b3Jy\u202ez\u2066"));
    phone.put("/Applications/Evil.app/Info.plist", info);
    TmuxTerminal terminal(program(phone), {.height = 60});
    ASSERT_TRUE(terminal.waitFor("Quit"));
    terminal.record();
    terminal.type("/advanced");
    terminal.press({"Enter", "Enter"});
    ASSERT_TRUE(terminal.waitFor("Reachable"));
    terminal.type("/disable in");
    terminal.press({"Enter", "Enter"});
    ASSERT_TRUE(terminal.waitFor("owned"));
    terminal.press({"q"});
    EXPECT_EQ(terminal.waitForEnd(), 0);
    const std::string bytes = terminal.recorded("owned");
    ASSERT_THAT(bytes, HasSubstr("owned"));
    for (const char* attack : {"\x1b]", "\x1b[2Jx", "\u009b", "\u202e", "\u2066"})
        EXPECT_THAT(bytes, Not(HasSubstr(attack)));
}

TEST(Screen, takesTextOfThePhoneForTextAlone) {
    Phone phone;
    Dictionary info;
    info.set("CFBundleIdentifier", Value("com.example.evil"));
    info.set("CFBundleDisplayName", Value("Evil\x1b[31m\x1b]0;owned\x07\u009b2J"));
    phone.put("/Applications/Evil.app/Info.plist", info);
    TmuxTerminal terminal(program(phone), {});
    ASSERT_TRUE(terminal.waitFor("Quit"));
    terminal.type("/advanced");
    terminal.press({"Enter", "Enter"});
    ASSERT_TRUE(terminal.waitFor("Reachable"));
    terminal.type("/close all");
    terminal.press({"Enter", "Enter"});
    ASSERT_TRUE(terminal.waitFor("Camera"));
    terminal.type("/evil");
    terminal.press({"Enter"});
    EXPECT_TRUE(terminal.waitForRow("▸", "Evil")) << terminal.text();
    EXPECT_THAT(terminal.rowWith("▸"), HasSubstr("]0;owned"));
    EXPECT_THAT(terminal.lines().front(), HasSubstr("Close All Apps"));
}

}  // namespace
}  // namespace terminal_screen_test
