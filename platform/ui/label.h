// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/ui/color.h"
#include "platform/ui/font.h"
#include "platform/ui/view.h"

namespace platform {

enum class NSTextAlignment { left = 0, center = 1, right = 2 };
enum class NSLineBreakMode { byWordWrapping = 0, byTruncatingTail = 4 };

/// A stretch of text in one font.
struct TextRun {
    std::string text;
    UIFont font;
    bool operator==(const TextRun&) const = default;
};

using NSAttributedString = std::vector<TextRun>;

class TRIVEL3_PLATFORM_EXPORT UILabel : public UIView {
public:
    using UIView::UIView;
    const char* className() const override { return "UILabel"; }

    /// The characters, whether set as plain or as attributed text; nothing when there are none.
    std::optional<std::string> text() const;
    void setText(std::optional<std::string> text);

    /// The runs of an attributed text; empty when the label shows plain text or none.
    const NSAttributedString& attributedText() const { return _attributedText; }
    void setAttributedText(NSAttributedString text);

    UIFont font;
    UIColor textColor = UIColor::blackColor();
    NSTextAlignment textAlignment = NSTextAlignment::left;
    /// Nothing draws no shadow.
    std::optional<UIColor> shadowColor;
    CGSize shadowOffset = {0, -1};
    /// 0 sets no limit.
    int numberOfLines = 1;
    NSLineBreakMode lineBreakMode = NSLineBreakMode::byTruncatingTail;

private:
    std::optional<std::string> _text;
    NSAttributedString _attributedText;
};

}  // namespace platform
