// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/sheet.h"

namespace hosts::terminal::screen {

/// What the keys do.
class HelpSheet final : public Sheet {
public:
    /// `close` takes the sheet off the screen.
    HelpSheet(const ScreenText& text, std::function<void()> close) : _text(text), _close(std::move(close)) {}

    std::string title() const override { return "Help"; }
    Picture compose(Size size) override;
    std::vector<KeyHint> hints() const override;
    void handle(const Event& event) override;

private:
    std::vector<Line> allLines(std::size_t width) const;

    ScreenText _text;
    std::function<void()> _close;
    std::size_t _top = 0;
    std::size_t _lastTop = 0;
};

}  // namespace hosts::terminal::screen
