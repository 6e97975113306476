// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/terminal/render/page_layout.h"
#include "hosts/terminal/screen/bars.h"
#include "hosts/terminal/screen/controls.h"
#include "hosts/terminal/screen/find_sheet.h"

namespace terminal_screen_test {
namespace {

using namespace hosts::terminal;
using namespace hosts::terminal::screen;
using testing::ElementsAre;
using testing::HasSubstr;

const ScreenText unicode{TextStyle{.colour = false, .unicode = true}};
const ScreenText ascii{TextStyle{.colour = false, .unicode = false}};

Event key(Key pressed) {
    Event event;
    event.key = pressed;
    return event;
}

Event typed(const std::string& character) {
    Event event;
    event.key = Key::character;
    event.character = character;
    return event;
}

TEST(ScreenText, takesOutWhatSteersATerminal) {
    EXPECT_EQ(unicode.plain("a\x1b[2J\x07\u009bb"), "a\uFFFD[2J\uFFFD\uFFFDb");
    EXPECT_EQ(ascii.plain("a\x1b[2J\xff"), "a?[2J?");
}

TEST(ScreenText, spellsTypographyInAscii) {
    EXPECT_EQ(ascii.plain("“It’s” – café…"), "\"It's\" - caf?...");
}

TEST(ScreenText, takesApartWhatTerminalsGiveOneWidthOrAnother) {
    EXPECT_EQ(unicode.plain("👨‍👩‍👧 👍🏽 ❤️ 1️⃣"), "👨👩👧 👍 ❤ 1");
    const TextStyle style{.colour = false, .unicode = true};
    EXPECT_EQ(ScreenText::forPrinting(style).plain("👨‍👩‍👧"), "👨‍👩‍👧");
}

TEST(ScreenText, measuresWhatIsDrawn) {
    EXPECT_THAT(ascii.lines("abc… def", 7), ElementsAre("abc...", "def"));
    EXPECT_EQ(ascii.fitted("abcdefgh", 6), "abc...");
}

TEST(ScreenText, saysWhenThereIsMore) {
    EXPECT_THAT(unicode.firstLines("one two three four", 9, 2), ElementsAre("one two", "three…"));
    EXPECT_THAT(unicode.firstLines("12345678 12345678 x", 8, 2), ElementsAre("12345678", "1234567…"));
    EXPECT_THAT(unicode.firstLines("one two", 9, 2), ElementsAre("one two"));
}

TEST(LineEditor, editsWholeCharacters) {
    LineEditor editor("né");
    editor.handle(key(Key::backspace));
    EXPECT_EQ(editor.text(), "n");
    editor.handle(typed("ü"));
    editor.handle(key(Key::home));
    editor.handle(typed("x"));
    editor.handle(key(Key::right));
    editor.handle(key(Key::deleteForward));
    EXPECT_EQ(editor.text(), "xn");
    EXPECT_EQ(editor.caret(), 2u);
}

TEST(LineEditor, leavesOtherKeysToOthers) {
    LineEditor editor("a");
    for (const Key other : {Key::enter, Key::escape, Key::tab, Key::up, Key::click})
        EXPECT_FALSE(editor.handle(key(other)));
    editor.handle(key(Key::home));
    EXPECT_TRUE(editor.handle(key(Key::backspace)));
    EXPECT_TRUE(editor.handle(key(Key::left)));
    EXPECT_EQ(editor.text(), "a");
}

TEST(TextField, goesOnToFurtherLinesAndKeepsTheCaretInside) {
    LineEditor editor("abcdefgh");
    const Picture picture = composeTextField(editor, 4, unicode);
    ASSERT_EQ(picture.lines.size(), 3u);
    EXPECT_EQ(picture.lines[1].text(), "efgh");
    EXPECT_EQ(picture.caret->line, 2u);
    EXPECT_EQ(picture.caret->column, 0u);
}

TEST(TitleBar, putsTheTitleInTheMiddleAndGivesWayToTheSides) {
    const TitleBar bar{"Advanced Options", "Quick Launcher", true};
    const Line wide = bar.compose(80, unicode);
    EXPECT_EQ(wide.columns(), 80u);
    EXPECT_EQ(wide.text().find("Quick Launcher"), std::string("‹").size() - 1 + 33);
    const Line narrow = bar.compose(40, unicode);
    EXPECT_EQ(narrow.columns(), 40u);
    EXPECT_THAT(narrow.text(), HasSubstr("Quick Launcher"));
    EXPECT_EQ(bar.partAt(2, 80, unicode), TitleBar::Part::back);
    EXPECT_EQ(bar.partAt(40, 80, unicode), TitleBar::Part::title);
    EXPECT_EQ(bar.partAt(78, 80, unicode), TitleBar::Part::rightButton);
}

TEST(TitleBar, takesItsWidthWhateverTheTitles) {
    const std::string endless(500, 'W');
    for (const std::string& title : {std::string(), endless}) {
        EXPECT_EQ((TitleBar{title, endless, true}.compose(40, ascii).columns()), 40u);
        EXPECT_EQ((TitleBar{endless, title, false}.compose(41, unicode).columns()), 41u);
    }
}

TEST(KeyLine, givesAsManyHintsAsFit) {
    const std::vector<KeyHint> hints{{"Enter", "Tap"}, {"q", "Quit"}, {"/", "Find"}};
    EXPECT_EQ(keyLine(hints, 40).text(), " Enter Tap  q Quit  / Find              ");
    EXPECT_EQ(keyLine(hints, 22).text(), " Enter Tap  q Quit    ");
}

TEST(ButtonRow, findsTheButtonUnderAClick) {
    const ButtonRow buttons({"Post", "Cancel"});
    EXPECT_EQ(buttons.compose(1).text(), "  [ Post ]  [>Cancel<]");
    EXPECT_EQ(buttons.buttonAt(1), std::nullopt);
    EXPECT_EQ(buttons.buttonAt(2), 0u);
    EXPECT_EQ(buttons.buttonAt(10), std::nullopt);
    EXPECT_EQ(buttons.buttonAt(21), 1u);
    EXPECT_EQ(buttons.buttonAt(22), std::nullopt);
}

TEST(SheetFocus, goesRoundTheButtonsAndWhatIsAboveThem) {
    SheetFocus focus(2);
    EXPECT_EQ(focus.button(), std::nullopt);
    for (const std::optional<std::size_t> next : {std::optional<std::size_t>(0), {1}, {}}) {
        EXPECT_TRUE(focus.handle(key(Key::tab)));
        EXPECT_EQ(focus.button(), next);
    }
    EXPECT_TRUE(focus.handle(key(Key::backTab)));
    EXPECT_EQ(focus.button(), 1u);
    EXPECT_FALSE(focus.handle(key(Key::enter)));
}

TEST(SheetFocus, staysOnButtonsWhereThereIsNothingElse) {
    SheetFocus focus = SheetFocus::onButton(1, 2);
    EXPECT_EQ(focus.button(), 1u);
    focus.handle(key(Key::tab));
    EXPECT_EQ(focus.button(), 0u);
    focus.handle(key(Key::backTab));
    EXPECT_EQ(focus.button(), 1u);
}

TEST(TextField, showsTheLinesAroundTheCaretWhereItHasNoRoomForMore) {
    Picture picture;
    picture.add({});
    LineEditor editor("aaabbbcccddd");
    addTextField(picture, editor, {7, 2}, unicode);
    ASSERT_EQ(picture.lines.size(), 3u);
    EXPECT_EQ(picture.lines[1].text(), "  ddd");
    ASSERT_TRUE(picture.caret);
    EXPECT_EQ(picture.caret->line, 2u);
    EXPECT_EQ(picture.caret->column, 2u);
}

TEST(RowLines, sayGreyedInWordsAndCutLongLabels) {
    hosts::RowSnapshot row;
    row.label = "A label that is longer than the row";
    row.kind = hosts::RowSnapshot::Kind::link;
    row.enabled = false;
    const auto lines = rowLines(row, true, {29, 1}, unicode);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].text(), "▸   A label that … (greyed) ›");
    EXPECT_EQ(lines[0].columns(), 29u);
}

/// A sheet that finds as many hits as the text has characters.
struct CountingFindSheet {
    std::optional<std::size_t> chosen;
    bool isClosed = false;
    FindSheet sheet{unicode,
                    {.search =
                         [](const std::string& text) {
                             std::vector<hosts::FindHit> hits;
                             for (std::size_t i = 0; i < text.size(); ++i)
                                 hits.push_back({.text = "Hit " + std::to_string(i), .place = "Page"});
                             return hits;
                         },
                     .close = [this] { isClosed = true; },
                     .choose = [this](const auto&, std::size_t hit) { chosen = hit; }}};

    void type(const std::string& text) {
        for (const char each : text) {
            Event event = key(Key::character);
            event.character = std::string(1, each);
            sheet.handle(event);
        }
    }
    std::vector<std::string> lines(std::size_t height) {
        std::vector<std::string> texts;
        for (const Line& line : sheet.compose({30, height}).lines) {
            texts.push_back(line.text());
            texts.back().erase(texts.back().find_last_not_of(' ') + 1);
        }
        return texts;
    }
};

TEST(FindSheet, showsTheHitsAroundTheChosenOne) {
    CountingFindSheet find;
    find.type("abc d");
    EXPECT_THAT(find.lines(7), ElementsAre("", "  abc d", "", "▸ Hit 0", "    Page", "  Hit 1", "    Page"));
    for (int i = 0; i < 3; ++i)
        find.sheet.handle(key(Key::down));
    EXPECT_THAT(find.lines(7), ElementsAre("", "  abc d", "", "  Hit 2", "    Page", "▸ Hit 3", "    Page"));
    find.sheet.handle(key(Key::up));
    EXPECT_THAT(find.lines(5), ElementsAre("", "  abc d", "", "▸ Hit 2", "    Page"));
    find.sheet.handle(key(Key::enter));
    EXPECT_EQ(find.chosen, 2u);
    EXPECT_TRUE(find.isClosed);
}

TEST(FindSheet, goesToTheHitUnderAClickAndToNoneBelowThem) {
    CountingFindSheet find;
    find.type("ab");
    find.lines(12);
    Event click = key(Key::click);
    click.line = 7;
    find.sheet.handle(click);
    EXPECT_EQ(find.chosen, std::nullopt);
    click.line = 6;
    find.sheet.handle(click);
    EXPECT_EQ(find.chosen, 1u);
}

TEST(FindSheet, clearsByEscapeAndThenCloses) {
    CountingFindSheet find;
    find.type("a");
    find.sheet.handle(key(Key::escape));
    EXPECT_FALSE(find.isClosed);
    EXPECT_EQ(find.lines(12)[1], "");
    find.sheet.handle(key(Key::enter));
    EXPECT_EQ(find.chosen, std::nullopt);
    find.sheet.handle(key(Key::escape));
    EXPECT_TRUE(find.isClosed);
}

}  // namespace
}  // namespace terminal_screen_test
