// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hosts/session/composer_outcome.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/controls.h"
#include "hosts/terminal/screen/sheet.h"

namespace hosts::terminal::screen {

/// A post for the user to change, and then to post or drop.
class PostSheet final : public Sheet {
public:
    using Composer = platform::SLComposeViewController;

    PostSheet(std::shared_ptr<Composer> composer, HandOver& handOver, Notices& notices, const ScreenText& text);

    std::string title() const override { return "New Post"; }
    Picture compose(Size size) override;
    std::vector<KeyHint> hints() const override;
    void handle(const Event& event) override;

private:
    bool textHasFocus() const { return _focus == _buttons.count(); }
    void moveFocus(std::size_t by);
    void click(const Event& event);
    void press(std::size_t button);

    std::shared_ptr<Composer> _composer;
    HandOver& _handOver;
    Notices& _notices;
    ScreenText _text;
    LineEditor _editor;
    ButtonRow _buttons;
    /// A button's number, or their count for the text.
    std::size_t _focus;
    std::size_t _buttonLine = 0;
};

}  // namespace hosts::terminal::screen
