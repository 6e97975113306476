// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/terminal_screen/opened_screen.h"

namespace terminal_screen_test {
namespace {

using platform::Value;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

TEST(ScreenControls, moveFromRowToRowAndFromEndToEnd) {
    OpenedScreen screen;
    screen.terminal.press({"Down"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Quick Switcher"));
    screen.terminal.press({"Up"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Multi-Center"));
    screen.terminal.press({"End"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Fenwary Support"));
    screen.terminal.press({"Home"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Multi-Center"));
    screen.terminal.press({"NPage"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Fenwary Support"));
    screen.terminal.press({"PPage"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Multi-Center"));
}

TEST(ScreenControls, findRowsOnAllPagesAsTheirLabelsAreTyped) {
    OpenedScreen screen;
    screen.terminal.type("/set volume");
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Set Volume to Minimum"));
    EXPECT_TRUE(screen.terminal.waitFor("Trivel 3 › Advanced Options › Slider Actions › Tap Volume Icon to:"));
    screen.terminal.press({"Escape"});
    ASSERT_TRUE(screen.terminal.waitFor("it is looked for on all pages"));
    screen.terminal.press({"Escape"});
    ASSERT_TRUE(screen.terminal.waitForRow("▸", "Multi-Center"));

    screen.terminal.type("/set volume");
    screen.terminal.press({"Down", "Enter"});
    ASSERT_TRUE(screen.terminal.waitForRow("▸", "Set Volume to Maximum"));
    EXPECT_THAT(screen.terminal.lines().front(), HasSubstr("Slider Actions"));
    screen.terminal.press({"N"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Set Volume to Minimum"));
    screen.terminal.press({"n"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Set Volume to Maximum"));
    screen.terminal.type("/HotCorners");
    screen.terminal.press({"Enter"});
    ASSERT_TRUE(screen.terminal.waitForRow("▸", "Hot Corners"));
    EXPECT_THAT(screen.terminal.lines().front(), Not(HasSubstr("‹"))) << "back on the first page";
    screen.terminal.type("/nothing like it");
    EXPECT_TRUE(screen.terminal.waitFor("Found on no page"));
}

TEST(ScreenControls, helpTellsTheKeys) {
    OpenedScreen screen;
    screen.terminal.press({"?"});
    ASSERT_TRUE(screen.terminal.waitFor("Quit; all changes are already saved"));
    screen.terminal.press({"Escape"});
    EXPECT_TRUE(screen.terminal.waitUntilGone("already saved"));
    EXPECT_TRUE(screen.terminal.waitFor("Multi-Center"));
}

TEST(ScreenControls, helpScrollsWhereItDoesNotFit) {
    OpenedScreen screen({.width = 40, .height = 12});
    screen.terminal.press({"?"});
    ASSERT_TRUE(screen.terminal.waitFor("Up, Down"));
    for (int i = 0; i < 30; ++i)
        screen.terminal.press({"Down"});
    EXPECT_TRUE(screen.terminal.waitFor("already saved"));
}

TEST(ScreenControls, clickTapsRowsAndTheTitleBar) {
    OpenedScreen screen;
    screen.terminal.click(*screen.terminal.lineWith("Hot Corners  "), 10);
    EXPECT_TRUE(screen.terminal.waitForRow("Hot Corners  ", "off"));
    EXPECT_EQ(screen.phone.stored("HotCorners"), Value(false));
    screen.terminal.click(*screen.terminal.lineWith("The Creators"), 10);
    ASSERT_TRUE(screen.terminal.waitFor("‹ Trivel 3"));
    screen.terminal.click(0, 3);
    EXPECT_TRUE(screen.terminal.waitFor("Thank you for your purchase."));
    screen.terminal.click(0, 78);
    EXPECT_TRUE(screen.terminal.waitFor("New Post"));
}

TEST(ScreenControls, wheelScrolls) {
    OpenedScreen screen({.width = 80, .height = 12});
    ASSERT_TRUE(screen.terminal.waitFor("Thank you for your purchase."));
    screen.terminal.turnWheelDown(5, 5);
    EXPECT_TRUE(screen.terminal.waitUntilGone("Thank you for your purchase."));
}

TEST(ScreenLook, followsTheTerminalsSize) {
    OpenedScreen screen;
    screen.terminal.resize(39, 12);
    EXPECT_TRUE(screen.terminal.waitFor("Too small: 39×12; at least 40×12"));
    screen.terminal.press({"Space"});
    screen.terminal.resize(40, 12);
    EXPECT_TRUE(screen.terminal.waitFor("▸   Multi-Center"));
    screen.terminal.resize(120, 40);
    EXPECT_TRUE(screen.terminal.waitFor("Fenwary Support"));
    EXPECT_THAT(screen.terminal.text(), HasSubstr("expand it. Slide the Home Screen"));
    // The cursor moves once the key before has been dealt with.
    screen.terminal.press({"Down"});
    ASSERT_TRUE(screen.terminal.waitForRow("▸", "Quick Switcher"));
    EXPECT_EQ(screen.phone.stored("MultiCenter"), std::nullopt);
}

// An escape sequence that sets a colour; 39 and 49 are the terminal's own.
constexpr const char* colour = "\x1b\\[([0-9]+;)*[34][0-8][m;]";

TEST(ScreenLook, hasColourWhereTheTerminalHas) {
    OpenedScreen screen;
    EXPECT_THAT(screen.terminal.colouredText(), ContainsRegex(colour));
}

TEST(ScreenLook, doesWithoutColourWhereItIsNotWanted) {
    OpenedScreen screen({.environment = {{"NO_COLOR", "1"}}});
    EXPECT_THAT(screen.terminal.colouredText(), Not(ContainsRegex(colour)));
    EXPECT_THAT(screen.terminal.rowWith("▸"), HasSubstr("Multi-Center"));
    EXPECT_THAT(screen.terminal.colouredText(), HasSubstr("\x1b[7m"));
}

TEST(ScreenLook, doesWithoutColourWhereTheUserSaysSo) {
    const Phone phone;
    TmuxTerminal terminal(program(phone, {"--color", "never"}), {});
    ASSERT_TRUE(terminal.waitFor("Multi-Center"));
    EXPECT_THAT(terminal.colouredText(), Not(ContainsRegex(colour)));
    terminal.press({"q"});
    EXPECT_EQ(terminal.waitForEnd(), 0);
}

TEST(ScreenLook, doesWithoutColourOnATerminalThatHasNone) {
    OpenedScreen screen({.kind = "vt100"});
    EXPECT_THAT(screen.terminal.colouredText(), Not(ContainsRegex(colour)));
    screen.terminal.press({"Space"});
    EXPECT_TRUE(screen.terminal.waitForRow("Multi-Center  ", "off"));
}

// Where nothing is dim, footers would read as rows.
TEST(ScreenLook, setsFootersInFromTheRowsOnEveryTerminal) {
    OpenedScreen screen({.kind = "vt100"});
    const std::string row = screen.terminal.rowWith("Quick Switcher");
    const std::string footer = screen.terminal.rowWith("Pull up from the bottom left");
    EXPECT_EQ(row.find("Quick Switcher"), 4u) << row;
    EXPECT_EQ(footer.find("Pull up"), 6u) << footer;
}

TEST(ScreenLook, usesAsciiAloneWhereTheLocaleHasNoMore) {
    OpenedScreen screen({.locale = "C"});
    const std::string root = screen.terminal.text();
    EXPECT_TRUE(std::ranges::all_of(root, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; })) << root;
    EXPECT_THAT(screen.terminal.rowWith("> "), HasSubstr("Multi-Center"));
    EXPECT_THAT(screen.terminal.rowWith("Multi-Center  "), HasSubstr("[ on]"));
    ASSERT_TRUE(screen.open("Advanced Options"));
    ASSERT_TRUE(screen.open("Slider Actions"));
    EXPECT_THAT(screen.terminal.rowWith("Toggle Auto-Brightness"), HasSubstr("* Toggle"));
    EXPECT_THAT(screen.terminal.lines().front(), HasSubstr("< Advanced Options"));
}

}  // namespace
}  // namespace terminal_screen_test
