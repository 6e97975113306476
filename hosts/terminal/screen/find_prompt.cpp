// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/find_prompt.h"

#include <algorithm>

#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/screen/row_search.h"

namespace hosts::terminal::screen {
namespace {

constexpr std::string_view label = " Find: ";
constexpr std::string_view missing = " no such row ";

}  // namespace

void FindPrompt::open(const PageView& view) {
    _isOpen = true;
    _isFound = true;
    _editor = LineEditor();
    _origin = view.cursor();
}

void FindPrompt::handle(const Event& event, PageView& view) {
    switch (event.key) {
        case Key::enter:
            _isOpen = false;
            break;
        case Key::escape:
            _isOpen = false;
            if (_origin) view.moveTo(*_origin);
            break;
        case Key::down:
        case Key::tab:
            repeat(view, false);
            break;
        case Key::up:
        case Key::backTab:
            repeat(view, true);
            break;
        default:
            if (_editor.handle(event)) follow(view);
    }
}

// From where the search began, so that a letter taken back takes the cursor back too.
void FindPrompt::follow(PageView& view) {
    _text = _editor.text();
    if (!_origin) return;
    const auto found = searchRow(view.page(), _text, *_origin, SearchFrom::here);
    _isFound = _text.empty() || found.has_value();
    view.moveTo(found.value_or(*_origin));
}

bool FindPrompt::repeat(PageView& view, bool upwards) const {
    const auto start = view.cursor();
    if (!start) return false;
    const auto found = searchRow(view.page(), _text, *start, upwards ? SearchFrom::before : SearchFrom::next);
    if (found) view.moveTo(*found);
    return found.has_value();
}

Picture FindPrompt::compose(std::size_t width, const ScreenText& text) const {
    const std::string note(_isFound ? std::string_view() : missing);
    const std::size_t room = width - columns(label) - columns(note) - 1;
    std::string before;
    for (std::size_t i = 0; i < _editor.caret(); ++i)
        before += text.plain(_editor.characters()[i]);
    // The end of a long text matters more than its beginning.
    std::string typed = text.plain(_editor.text());
    while (columns(before) > room && !typed.empty()) {
        const LineEditor rest(typed);
        typed.erase(0, rest.characters().front().size());
        before.erase(0, rest.characters().front().size());
    }
    typed = shortened(typed, room, "");
    Picture picture;
    Line& line = picture.lines.emplace_back();
    line.add(std::string(label), Ink::barKey);
    line.add(typed, Ink::bar);
    line.addSpaces(room + 1 - columns(typed), Ink::bar);
    line.add(note, Ink::warning);
    picture.caret = Caret{0, columns(label) + columns(before)};
    return picture;
}

}  // namespace hosts::terminal::screen
