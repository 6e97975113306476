// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/controls.h"
#include "hosts/terminal/screen/sheet.h"

namespace hosts::terminal::screen {

/// Asks the user something before another sheet goes on. It takes itself off the screen when it is answered.
class Question final : public Sheet {
public:
    struct Wording {
        std::string title;
        std::string text;
        std::string yes;
        std::string no;
        /// What a field to fill in begins with; nothing for a question without one.
        std::optional<std::string> suggestion = std::nullopt;
    };
    /// `agreed` is given what the field holds. `overlay` outlives the question.
    Question(Wording wording, const ScreenText& text, Overlay& overlay,
             std::function<void(const std::string& typed)> agreed);

    std::string title() const override { return _wording.title; }
    Picture compose(Size size) override;
    std::vector<KeyHint> hints() const override;
    void handle(const Event& event) override;

private:
    bool fieldHasFocus() const { return !_focus.button(); }
    void answer(std::size_t button);

    Wording _wording;
    ScreenText _text;
    Overlay& _overlay;
    std::function<void(const std::string& typed)> _agreed;
    LineEditor _editor;
    ButtonRow _buttons;
    SheetFocus _focus;
    std::size_t _buttonLine = 0;
};

}  // namespace hosts::terminal::screen
