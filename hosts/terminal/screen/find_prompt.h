// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/screen/controls.h"
#include "hosts/terminal/screen/page_view.h"

namespace hosts::terminal::screen {

enum class SearchFrom { here, next, before };

/// The row whose label holds the text, in small or capital letters: the nearest one from the row at
/// `start` on (`here`: that row itself can be the one), downwards or, for `before`, upwards, and round
/// the page's end. Nothing when no row's label does.
std::optional<platform::NSIndexPath> searchRow(platform::UIViewController& page, std::string_view text,
                                               platform::NSIndexPath start, SearchFrom from);

/// Finds rows by their labels: a line to type in, whose text the cursor follows as it is typed.
class FindPrompt {
public:
    bool isOpen() const { return _isOpen; }
    void open(const PageView& view);

    /// Takes a key while the prompt is open.
    void handle(const Event& event, PageView& view);
    /// Goes to the next row with the text that was last looked for, or the one before. False when
    /// there is no such row.
    bool repeat(PageView& view, bool upwards) const;
    const std::string& text() const { return _text; }

    /// The prompt's line; its caret is on line 0.
    Picture compose(std::size_t width, const ScreenText& text) const;

private:
    void follow(PageView& view);

    bool _isOpen = false;
    bool _isFound = true;
    LineEditor _editor;
    std::string _text;
    /// Where the cursor was before.
    std::optional<platform::NSIndexPath> _origin;
};

}  // namespace hosts::terminal::screen
