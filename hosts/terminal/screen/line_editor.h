// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/terminal/screen/event.h"

namespace hosts::terminal::screen {

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

}  // namespace hosts::terminal::screen
