// SPDX-License-Identifier: MIT
#include "platform/ui/label.h"

namespace platform {

std::optional<std::string> UILabel::text() const {
    if (_attributedText.empty()) return _text;
    std::string characters;
    for (const TextRun& run : _attributedText)
        characters += run.text;
    return characters;
}

void UILabel::setText(std::optional<std::string> text) {
    _text = std::move(text);
    _attributedText.clear();
}

void UILabel::setAttributedText(NSAttributedString text) {
    _text.reset();
    _attributedText = std::move(text);
}

}  // namespace platform
