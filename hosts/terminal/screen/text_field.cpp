// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/text_field.h"

#include <string>

#include "hosts/terminal/render/printable.h"

namespace hosts::terminal::screen {

// The field always has room for the caret behind the text.
Picture composeTextField(const LineEditor& editor, std::size_t width, const ScreenText& text) {
    std::vector<std::string> lines(1);
    std::size_t used = 0;
    Caret caret;
    for (std::size_t i = 0; i <= editor.characters().size(); ++i) {
        const bool isEnd = i == editor.characters().size();
        const std::string drawn = isEnd ? " " : text.plain(editor.characters()[i]);
        if (used + columns(drawn) > width) {
            lines.emplace_back();
            used = 0;
        }
        if (i == editor.caret()) caret = {lines.size() - 1, used};
        if (!isEnd) lines.back() += drawn;
        used += columns(drawn);
    }
    Picture picture;
    for (std::string& line : lines) {
        line.append(width - columns(line), ' ');
        picture.add(std::move(line), Ink::field);
    }
    picture.caret = caret;
    return picture;
}

}  // namespace hosts::terminal::screen
