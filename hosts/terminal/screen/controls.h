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
    /// `focused` is the button's number; nothing when none has the focus.
    Line compose(std::optional<std::size_t> focused) const;
    /// The number of the button at this column; nothing between them.
    std::optional<std::size_t> buttonAt(std::size_t column) const;

private:
    std::vector<std::string> _labels;
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

}  // namespace hosts::terminal::screen
