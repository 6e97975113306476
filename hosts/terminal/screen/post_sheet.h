// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/session/composed_post.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/controls.h"
#include "hosts/terminal/screen/sheet.h"

namespace hosts::terminal::screen {

/// A post for the user to change, and then to post or drop. What was changed is dropped once the user has agreed.
class PostSheet final : public Sheet {
public:
    /// The notices and the overlay outlive the sheet.
    PostSheet(const ComposedPost& post, Notices& notices, Overlay& overlay, const ScreenText& text);

    std::string title() const override { return "New Post"; }
    Picture compose(Size size) override;
    std::vector<KeyHint> hints() const override;
    void handle(const Event& event) override;
    bool holdsTypedText() const override { return _post.isChanged(); }
    void askToDrop(const std::function<void()>& agreed) override;

private:
    bool textHasFocus() const { return !_focus.button(); }
    void click(const Event& event);
    void press(std::size_t button);
    void post();
    void cancel();

    ComposedPost _post;
    Notices& _notices;
    Overlay& _overlay;
    ScreenText _text;
    LineEditor _editor;
    ButtonRow _buttons;
    SheetFocus _focus;
    std::size_t _buttonLine = 0;
};

}  // namespace hosts::terminal::screen
