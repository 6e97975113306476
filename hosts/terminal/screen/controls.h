// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/event.h"

namespace hosts::terminal::screen {

/// Buttons side by side, one of which can have the focus.
class ButtonRow {
public:
    explicit ButtonRow(std::vector<std::string> labels) : _labels(std::move(labels)) {}

    std::size_t count() const { return _labels.size(); }
    /// `focused` is the button's number; nothing when none has the focus. So is `off`, of one that does nothing now.
    Line compose(std::optional<std::size_t> focused, std::optional<std::size_t> off = std::nullopt) const;
    /// The number of the button at this column; nothing between them.
    std::optional<std::size_t> buttonAt(std::size_t column) const;

private:
    std::vector<std::string> _labels;
};

/// What the keyboard acts on in a sheet: one of its buttons, or what stands above them.
class SheetFocus {
public:
    /// Of a sheet with so many buttons. What is above them has the focus first.
    explicit SheetFocus(std::size_t buttons) : _buttons(buttons), _places(buttons + 1), _place(buttons) {}
    /// Of a sheet with buttons alone, one of which has the focus first.
    static SheetFocus onButton(std::size_t first, std::size_t buttons);

    /// The number of the button that has the focus; nothing when what is above them has.
    std::optional<std::size_t> button() const;
    void moveToTop() { _place = _buttons; }
    /// To the first button from the top, and from the last one to the top again.
    void moveOn() { move(1); }

    /// Tab and the arrows go round; false, with nothing done, for any other key.
    bool handle(const Event& event);

private:
    void move(std::size_t by) { _place = (_place + by) % _places; }

    std::size_t _buttons;
    // The buttons by their numbers and then, unless there are buttons alone, what is above them.
    std::size_t _places;
    std::size_t _place;
};

/// Text that the user edits, and the place in it at which the next character comes.
class LineEditor {
public:
    LineEditor() = default;
    /// The text is UTF-8; the caret stands at its end.
    explicit LineEditor(std::string_view text);

    std::string text() const;
    const std::vector<std::string>& characters() const { return _characters; }
    /// Characters before the caret.
    std::size_t caret() const { return _caret; }
    void setCaret(std::size_t caret);

    /// Carries out what the key does to a text; false, with nothing done, for any other key.
    bool handle(const Event& event);

private:
    bool moveCaret(Key key);

    std::vector<std::string> _characters;
    std::size_t _caret = 0;
};

/// The editor's text in a field of `width` columns, on as many lines as it takes, with the caret
/// where the next character comes.
Picture composeTextField(const LineEditor& editor, std::size_t width, const ScreenText& text);

/// Puts such a field below what the picture shows, set in from both edges of its `width` columns, and its caret where
/// it is then. Of a field of more than `most` lines, those around the caret.
struct FieldRoom {
    std::size_t width;
    std::size_t most;
};
void addTextField(Picture& picture, const LineEditor& editor, FieldRoom room, const ScreenText& text);

}  // namespace hosts::terminal::screen
