// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/find_prompt.h"

#include <algorithm>
#include <cwctype>
#include <iterator>

#include "hosts/session/row_finder.h"
#include "hosts/terminal/render/printable.h"
#include "platform/foundation/utf8.h"

namespace hosts::terminal::screen {
namespace {

constexpr std::string_view promptLabel = " Find: ";
constexpr std::string_view noSuchRow = " no such row ";

std::wstring inSmallLetters(std::string_view text) {
    std::wstring small;
    while (!text.empty()) {
        const platform::Utf8Character letter = platform::firstUtf8Character(text);
        small += static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(letter.code)));
        text.remove_prefix(letter.length);
    }
    return small;
}

}  // namespace

std::optional<platform::NSIndexPath> searchRow(platform::UIViewController& page, std::string_view text,
                                               platform::NSIndexPath start, SearchFrom from) {
    const std::vector<RowPlace> rows = rowPlaces(page);
    if (rows.empty() || text.empty()) return std::nullopt;
    const std::wstring wanted = inSmallLetters(text);
    const auto found = std::ranges::find(rows, start, &RowPlace::path);
    const std::size_t count = rows.size();
    const auto origin = static_cast<std::size_t>(std::distance(rows.begin(), found)) % count;
    for (std::size_t step = from == SearchFrom::here ? 0 : 1; step <= count; ++step) {
        const RowPlace& row = rows[(from == SearchFrom::before ? origin + count - step : origin + step) % count];
        if (inSmallLetters(row.label).find(wanted) != std::wstring::npos) return row.path;
    }
    return std::nullopt;
}

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
    const std::string note(_isFound ? std::string_view() : noSuchRow);
    const std::size_t room = width - columns(promptLabel) - columns(note) - 1;
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
    line.add(std::string(promptLabel), Ink::barKey);
    line.add(typed, Ink::bar);
    line.addSpaces(room + 1 - columns(typed), Ink::bar);
    line.add(note, Ink::warning);
    picture.caret = Caret{0, columns(promptLabel) + columns(before)};
    return picture;
}

}  // namespace hosts::terminal::screen
