// SPDX-License-Identifier: MIT
// A page as text must tell at a glance which rows are switched on, checked, greyed or lead on, with
// colour and without. These tests hold whole lines, because it is the lines that people read.

#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace terminal_test {

using namespace kit;

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

// A terminal ends its lines with a carriage return as well.
std::vector<std::string> shownLines(const std::string& text) {
    std::vector<std::string> lines = linesOf(text);
    for (std::string& line : lines) {
        if (line.ends_with('\r')) line.pop_back();
    }
    return lines;
}

// Columns that the line takes: every character here takes one, and escape sequences none.
std::size_t columnsOf(const std::string& line) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\x1b')
            i = line.find('m', i);
        else if ((static_cast<unsigned char>(line[i]) & 0xC0) != 0x80)
            ++columns;
    }
    return columns;
}

// A row whose state stands at the right end of 80 columns.
std::string row(const std::string& label, const std::string& state, std::size_t width = 80) {
    const std::string start = "    " + label;
    return start + std::string(width - columnsOf(start) - columnsOf(state), ' ') + state;
}

struct ShowText : testing::Test {
    ShowText() { ctl.usePhone(phone.folder); }

    std::vector<std::string> lines(const Trivel3ctl::Arguments& arguments) {
        const Outcome outcome = ctl.run(arguments);
        expectDone(outcome);
        return shownLines(outcome.output);
    }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(ShowText, rootPageReadsAsItLooks) {
    writeSettings(phone, settingsOf({{"QuickSwitcher", "<false/>"}}));
    const std::vector<std::string> expected = {
        "Trivel 3",
        "by Movane and Daxon",
        "Thank you for your purchase.",
        "",
        row("Multi-Center", "[ on]"),
        "      Merge Multitasking and Control Center. Access by sliding up from the",
        "      bottom. Slide an app preview down to expand it. Slide the Home Screen",
        "      preview up to close all apps.",
        "",
        row("Quick Switcher", "[off]"),
        "      Pull up from the bottom left corner of the screen to access, then release",
        "      your finger on the app you want to switch to.",
        "",
        row("Hot Corners", "[ on]"),
        "      Return to the Home Screen by swiping up from the bottom right corner of",
        "      the screen.",
        "",
        row("Advanced Options", "›"),
        "",
        row("The Creators", "›"),
        "",
        row("Fenwary Support", "›"),
    };
    EXPECT_EQ(lines({"show"}), expected);
}

// The mark stands ahead of the label, where the eye runs down; titles stand out to the left.
TEST_F(ShowText, checkedRowsBearAMark) {
    writeSettings(phone, settingsOf({{"SliderActionsVolume", "<integer>1</integer>"}}));
    const std::vector<std::string> expected = {
        "Slider Actions",
        "",
        "  Tap Brightness Icon to:",
        "  ✓ Toggle Auto-Brightness",
        "    Set Brightness to Minimum",
        "    Set Brightness to Maximum",
        "",
        "  Tap Volume Icon to:",
        "    Switch to Ringer Volume",
        "    Set Volume to Minimum",
        "  ✓ Set Volume to Maximum",
        "",
        row("Disable Slider HUD", "[off]"),
    };
    EXPECT_EQ(lines({"show", "Advanced Options/Slider Actions"}), expected);
}

TEST_F(ShowText, greyedRowsSaySoInWords) {
    const auto shown = lines({"show", "Advanced Options"});
    EXPECT_THAT(shown, Contains(row("Quick Launcher", "(greyed) ›")));
    EXPECT_THAT(shown, Contains(row("Access App Switcher", "(greyed) [off]")));
    EXPECT_THAT(shown, Contains(row("If AirDrop is Off", "(greyed)")));
    EXPECT_THAT(shown, Contains("    Always"));
    EXPECT_THAT(shown, Contains("  ✓ If no Media is Playing"));
}

TEST_F(ShowText, detailsOfARowStandBelowIt) {
    const auto shown = lines({"show", "The Creators"});
    const auto name = std::ranges::find_if(shown, [](auto& line) { return line.starts_with("    Daxon"); });
    ASSERT_NE(name, shown.end());
    EXPECT_EQ(*name, row("Daxon (@Daxon_QT)", "›"));
    EXPECT_EQ(*(name + 1), "      Visual Interaction Designer,");
}

TEST_F(ShowText, asciiStandsInWhereTheLocaleIsNotUtf8) {
    for (const char* locale : {"C", "POSIX", ""}) {
        SCOPED_TRACE(locale);
        ctl.set("LC_ALL", locale);
        const auto root = lines({"show"});
        EXPECT_THAT(root, Contains(row("The Creators", ">")));
        EXPECT_THAT(lines({"show", "Advanced Options/Slider Actions"}), Contains("  * Toggle Auto-Brightness"));
        for (const std::string& line : root)
            EXPECT_EQ(std::ranges::count_if(line, [](char c) { return static_cast<unsigned char>(c) >= 0x80; }), 0);
    }
}

TEST_F(ShowText, pipedOutputIsPlainAndEightyColumnsWide) {
    ctl.set("TERM", "xterm-256color");
    const Outcome outcome = ctl.run({"show"});
    EXPECT_THAT(outcome.output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(shownLines(outcome.output), Contains(row("The Creators", "›")));
}

TEST_F(ShowText, columnsOfTheEnvironmentCountWhereThereIsNoTerminal) {
    ctl.set("COLUMNS", "60");
    EXPECT_THAT(lines({"show"}), Contains(row("The Creators", "›", 60)));
    ctl.set("COLUMNS", "nonsense");
    EXPECT_THAT(lines({"show"}), Contains(row("The Creators", "›", 80)));
}

TEST_F(ShowText, linesFitTheTerminalAndStayShortEnoughToRead) {
    const std::vector<std::pair<unsigned short, std::size_t>> widths = {{40, 40}, {72, 72}, {100, 100}, {250, 100}};
    for (const auto& [terminal, width] : widths) {
        SCOPED_TRACE(terminal);
        const Outcome outcome = ctl.runOnTerminal({"show", "Advanced Options"}, terminal);
        expectDone(outcome);
        for (const std::string& line : shownLines(outcome.output))
            EXPECT_LE(columnsOf(line), width) << line;
        EXPECT_THAT(shownLines(outcome.output), Contains(row("Slider Actions", "›", width)));
    }
}

TEST_F(ShowText, labelsThatDoNotFitAreCut) {
    addApplication(phone, "An application whose name goes on and on without end");
    const Trivel3ctl::Arguments show = {"show", "Advanced Options/Disable in Applications"};
    EXPECT_THAT(shownLines(ctl.runOnTerminal(show, 40).output), Contains("    An application whose name goes on a…"));
    ctl.set("LC_ALL", "C");
    EXPECT_THAT(shownLines(ctl.runOnTerminal(show, 40).output), Contains("    An application whose name goes on..."));
}

// Wide characters take two columns; half of one is never left.
TEST_F(ShowText, labelsAreMeasuredInColumns) {
    addApplication(phone, "応用応用応用応用応用応用応用応用応用応用応用応用");
    const Trivel3ctl::Arguments show = {"show", "Advanced Options/Disable in Applications"};
    EXPECT_THAT(shownLines(ctl.runOnTerminal(show, 40).output), Contains("    応用応用応用応用応用応用応用応用応…"));
    EXPECT_THAT(lines(show), Contains("    応用応用応用応用応用応用応用応用応用応用応用応用"));
}

TEST_F(ShowText, labelsAreSpeltInWhatTheLocaleCanSay) {
    addApplication(phone, "“Blåbär” 👨‍👩‍👧");
    const std::string page = "Advanced Options/Disable in Applications";
    EXPECT_THAT(lines({"show", page}), Contains("    “Blåbär” 👨‍👩‍👧"));
    ctl.set("LC_ALL", "C");
    EXPECT_THAT(lines({"show", page}), Contains("    \"Bl?b?r\" ?????"));
    const json shown = ctl.runForJson({"show", page, "--json"});
    EXPECT_THAT(shown.dump(), HasSubstr("“Blåbär” 👨‍👩‍👧"));
}

TEST_F(ShowText, opensNoIcons) {
    writeText(phone / "Applications/Kettle.app/Info.plist", settingsOf({{"CFBundleIconFile", "<string>Icon</string>"},
                                                                        {"CFBundleIdentifier", "<string>a</string>"}}));
    writeText(phone / "Applications/Kettle.app/Icon.png", "no picture");
    const std::string calls = ctl.folder() / "calls";
    // Leaks cannot be looked for in a program that is traced.
    ctl.set("ASAN_OPTIONS", "detect_leaks=0");
    ctl.runThrough({"/usr/bin/strace", "-f", "-e", "trace=openat,openat2,open", "-o", calls});
    const Trivel3ctl::Arguments show = {"show", "Advanced Options/Disable in Applications"};
    const auto isOpened = [&calls](const char* file) { return readText(calls).find(file) != std::string::npos; };
    expectDone(ctl.run(show));
    EXPECT_TRUE(isOpened("Kettle.app/Info.plist"));
    EXPECT_FALSE(isOpened("Kettle.app/Icon.png"));
    // What has them, opens them.
    ctl.runForJson({"show", show.back(), "--json"});
    EXPECT_TRUE(isOpened("Kettle.app/Icon.png"));
}

// Dim is for what is greyed and for what is only said about rows; green for what is on.
TEST_F(ShowText, terminalsGetColour) {
    ctl.set("TERM", "xterm");
    const Outcome root = ctl.runOnTerminal({"show"}, 80);
    EXPECT_THAT(shownLines(root.output), Contains("\x1b[1mTrivel 3\x1b[0m"));
    EXPECT_THAT(shownLines(root.output), Contains(row("Hot Corners", "\x1b[32m[ on]\x1b[0m")));
    EXPECT_THAT(shownLines(root.output), Contains(row("The Creators", "›")));
    EXPECT_THAT(shownLines(root.output), Contains("      \x1b[2mthe screen.\x1b[0m"));

    const Outcome options = ctl.runOnTerminal({"show", "Advanced Options"}, 80);
    EXPECT_THAT(shownLines(options.output), Contains("  \x1b[32m✓\x1b[0m If no Media is Playing"));
    EXPECT_THAT(shownLines(options.output), Contains(row("\x1b[2mQuick Launcher\x1b[0m", "\x1b[2m(greyed) ›\x1b[0m")));
    EXPECT_THAT(shownLines(options.output), Contains(row("Open to Last App", "[off]")));
}

TEST_F(ShowText, colourCanBeDoneWithout) {
    ctl.set("TERM", "xterm");
    ctl.set("NO_COLOR", "1");
    EXPECT_THAT(ctl.runOnTerminal({"show"}, 80).output, Not(HasSubstr("\x1b")));
    ctl.unset("NO_COLOR");
    ctl.set("TERM", "dumb");
    EXPECT_THAT(ctl.runOnTerminal({"show"}, 80).output, Not(HasSubstr("\x1b")));
    ctl.unset("TERM");
    EXPECT_THAT(ctl.runOnTerminal({"show"}, 80).output, Not(HasSubstr("\x1b")));
}

TEST_F(ShowText, colourIsAsTheUserSays) {
    EXPECT_THAT(ctl.run({"show", "--color", "always"}).output, HasSubstr("\x1b[1mTrivel 3\x1b[0m"));
    EXPECT_EQ(ctl.run({"show", "--color", "auto"}).output, ctl.run({"show"}).output);
    ctl.set("TERM", "xterm");
    EXPECT_THAT(ctl.runOnTerminal({"show", "--color=never"}, 80).output, Not(HasSubstr("\x1b")));
    ctl.set("NO_COLOR", "1");
    EXPECT_THAT(ctl.runOnTerminal({"--color", "auto", "show"}, 80).output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(ctl.runOnTerminal({"--color", "always", "show"}, 80).output, HasSubstr("\x1b[1m"));
    EXPECT_THAT(ctl.run({"show", "--json", "--color", "always"}).output, Not(HasSubstr("\x1b")));
}

TEST_F(ShowText, emptyNoColorVariableCountsAsUnset) {
    ctl.set("TERM", "xterm");
    ctl.set("NO_COLOR", "");
    EXPECT_THAT(ctl.runOnTerminal({"show"}, 80).output, HasSubstr("\x1b[1m"));
}

}  // namespace
}  // namespace terminal_test
