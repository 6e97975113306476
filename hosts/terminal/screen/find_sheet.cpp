// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/find_sheet.h"

#include <algorithm>

#include "hosts/session/printable.h"

namespace hosts::terminal::screen {
namespace {

constexpr std::size_t indent = 2;
constexpr std::size_t linesOfHit = 2;

}  // namespace

Picture FindSheet::compose(Size size) {
    Picture picture;
    picture.add({});
    addTextField(picture, _editor, {size.width, 1}, _text);
    picture.add({});
    _firstLine = picture.lines.size();
    const std::size_t room = std::max<std::size_t>(1, (size.height - std::min(size.height, _firstLine)) / linesOfHit);
    _first = std::clamp(_first, _chosen + 1 - std::min(_chosen + 1, room), _chosen);
    for (std::size_t hit = _first; hit < std::min(_hits.size(), _first + room); ++hit)
        addHit(picture, hit, size.width);
    if (_hits.empty()) {
        const std::string remark = remarkOnNoHits(!_editor.text().empty());
        for (const std::string& line : _text.lines(remark, size.width - 2 * indent))
            picture.lines.push_back(Line::of(indent, line, Ink::faint));
    }
    return picture;
}

void FindSheet::addHit(Picture& picture, std::size_t hit, std::size_t width) const {
    const bool isChosen = hit == _chosen;
    const auto add = [&](std::string_view mark, const std::string& text, std::size_t from, Ink ink) {
        Line& line = picture.lines.emplace_back();
        line.selected = isChosen;
        line.add(std::string(mark));
        line.addSpaces(from - line.columns());
        line.add(_text.fitted(text, width - from - 1), ink);
        line.addSpaces(width - line.columns());
    };
    add(isChosen ? _text.glyphs().marker : " ", _hits[hit].text, indent, Ink::plain);
    add(" ", _hits[hit].place, 2 * indent, Ink::faint);
}

std::vector<KeyHint> FindSheet::hints() const {
    std::vector<KeyHint> hints;
    if (!_hits.empty()) hints = {{"Enter", "Go there"}, {std::string(_text.glyphs().upDownKeys), "Choose"}};
    hints.push_back({"Esc", _editor.text().empty() ? "Close" : "Clear"});
    return hints;
}

void FindSheet::handle(const Event& event) {
    switch (event.key) {
        case Key::enter:
            return choose(_chosen);
        case Key::escape:
            return escape();
        case Key::up:
        case Key::backTab:
        case Key::wheelUp:
            return move(-1);
        case Key::down:
        case Key::tab:
        case Key::wheelDown:
            return move(1);
        case Key::click:
            return event.line < _firstLine ? void() : choose(_first + (event.line - _firstLine) / linesOfHit);
        default:
            if (_editor.handle(event)) search();
    }
}

void FindSheet::search() {
    _hits = _does.search(_editor.text());
    _chosen = 0;
}

void FindSheet::escape() {
    if (_editor.text().empty()) return _does.close();
    _editor = LineEditor();
    search();
}

void FindSheet::move(std::ptrdiff_t by) {
    if (_hits.empty()) return;
    const auto last = static_cast<std::ptrdiff_t>(_hits.size()) - 1;
    _chosen = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(_chosen) + by, 0, last));
}

// Closing may be the end of the sheet.
void FindSheet::choose(std::size_t hit) {
    if (hit >= _hits.size()) return;
    const std::vector<FindHit> hits = _hits;
    const auto go = _does.choose;
    _does.close();
    go(hits, hit);
}

}  // namespace hosts::terminal::screen
