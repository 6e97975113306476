// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/help_sheet.h"

#include <algorithm>
#include <string_view>

namespace hosts::terminal::screen {
namespace {

struct Topic {
    std::string_view keys;
    std::string_view meaning;
};

constexpr Topic topics[] = {
    {"Up, Down", "Go from row to row"},
    {"PgUp, PgDn", "Go a screen up or down"},
    {"Home, End", "Go to the first or the last row"},
    {"Enter, Space", "Open the row's page, choose the row or move its switch"},
    {"Right", "Open the row's page, or whatever else the row leads to"},
    {"Left, Esc", "Back to the page before; Backspace too"},
    {"/", "Find a row, a title or a setting on all pages; n goes on to the next one found, N to the one before"},
    {"h", "Tap the heart, where the page has one"},
    {"r", "Load the page's rows again"},
    {"u, U", "Undo the last change; do it again"},
    {"R", "Reset the row, which bears a dot while it is not at its default"},
    {"Mouse", "A click taps, the wheel scrolls"},
    {"?", "This help"},
    {"q", "Quit; all changes are already saved"},
};

constexpr std::size_t keysIndent = 2;
constexpr std::size_t meaningIndent = 17;

}  // namespace

std::vector<Line> HelpSheet::allLines(std::size_t width) const {
    std::vector<Line> lines;
    for (const Topic& topic : topics) {
        std::string_view keys = topic.keys;
        for (const std::string& part : _text.lines(topic.meaning, width - meaningIndent - 1)) {
            Line& line = lines.emplace_back();
            line.addSpaces(keysIndent);
            line.add(std::string(keys), Ink::strong);
            line.addSpaces(meaningIndent - keysIndent - keys.size());
            line.add(part);
            keys = {};
        }
    }
    return lines;
}

Picture HelpSheet::compose(Size size) {
    Picture picture;
    picture.lines = allLines(size.width);
    _lastTop = picture.lines.size() - std::min(picture.lines.size(), size.height);
    _top = std::min(_top, _lastTop);
    picture.lines.erase(picture.lines.begin(), picture.lines.begin() + static_cast<std::ptrdiff_t>(_top));
    picture.lines.resize(std::min(picture.lines.size(), size.height));
    return picture;
}

std::vector<KeyHint> HelpSheet::hints() const {
    std::vector<KeyHint> hints{{"Esc", "Close"}};
    if (_lastTop > 0) hints.push_back({std::string(_text.glyphs().upDownKeys), "Scroll"});
    return hints;
}

void HelpSheet::handle(const Event& event) {
    switch (event.key) {
        case Key::up:
        case Key::wheelUp:
        case Key::pageUp:
            _top -= _top > 0 ? 1 : 0;
            break;
        case Key::down:
        case Key::wheelDown:
        case Key::pageDown:
            _top = std::min(_top + 1, _lastTop);
            break;
        default:
            _close();
    }
}

}  // namespace hosts::terminal::screen
