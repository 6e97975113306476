// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/session/finder.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/controls.h"
#include "hosts/terminal/screen/sheet.h"

namespace hosts::terminal::screen {

/// What the user looks for on all pages: a field to type in, and below it what has been found, the best first.
class FindSheet final : public Sheet {
public:
    struct Does {
        std::function<std::vector<FindHit>(const std::string& text)> search;
        /// Takes the sheet off the screen.
        std::function<void()> close;
        /// The user wants to go to that one of the hits; the sheet is off the screen by then.
        std::function<void(const std::vector<FindHit>& hits, std::size_t chosen)> choose;
    };
    FindSheet(const ScreenText& text, Does does) : _text(text), _does(std::move(does)) {}

    std::string title() const override { return "Find"; }
    Picture compose(Size size) override;
    std::vector<KeyHint> hints() const override;
    void handle(const Event& event) override;

private:
    void search();
    void escape();
    void choose(std::size_t hit);
    void move(std::ptrdiff_t by);
    void addHit(Picture& picture, std::size_t hit, std::size_t width) const;

    ScreenText _text;
    Does _does;
    LineEditor _editor;
    std::vector<FindHit> _hits;
    /// The hit that Enter goes to, and the first that is seen.
    std::size_t _chosen = 0;
    std::size_t _first = 0;
    std::size_t _firstLine = 0;
};

}  // namespace hosts::terminal::screen
