// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/glyphs.h"

namespace hosts::terminal::screen {
namespace {

constexpr Glyphs unicodeGlyphs{
    .marker = "▸",
    .check = "✓",
    .link = "›",
    .back = "‹",
    .heart = "♥",
    .switchOn = " on ━━●",
    .switchOff = "off ●──",
    .ellipsis = "…",
    .times = "×",
    .scrollThumb = "┃",
    .scrollTrack = "│",
    .upDownKeys = "↑↓",
    .leftKey = "←",
};

constexpr Glyphs asciiGlyphs{
    .marker = ">",
    .check = "*",
    .link = ">",
    .back = "<",
    .heart = "<3",
    .switchOn = "[ on]",
    .switchOff = "[off]",
    .ellipsis = "...",
    .times = "x",
    .scrollThumb = "#",
    .scrollTrack = "|",
    .upDownKeys = "Up/Down",
    .leftKey = "Left",
};

}  // namespace

const Glyphs& glyphsOf(const Style& style) {
    return style.unicode ? unicodeGlyphs : asciiGlyphs;
}

}  // namespace hosts::terminal::screen
