// SPDX-License-Identifier: MIT
#include "pages/root_header_view.h"

#include "platform/ui/label.h"

namespace trivel3 {
namespace {

constexpr double headerHeight = 114;
constexpr double titleTop = 10;
constexpr double titleHeight = 53;
constexpr double subtitleTop = 63;
constexpr double subtitleHeight = 34;

std::shared_ptr<platform::UILabel> makeLabel(platform::CGRect frame, const char* text, platform::UIFont font,
                                             platform::UIColor color, int lines) {
    auto label = std::make_shared<platform::UILabel>(frame);
    label->setAutoresizingMask(platform::UIViewAutoresizingFlexibleWidth);
    label->setText(text);
    label->font = std::move(font);
    label->textColor = color;
    label->textAlignment = platform::NSTextAlignment::center;
    label->numberOfLines = lines;
    return label;
}

}  // namespace

std::shared_ptr<platform::UIView> makeRootHeaderView(double width) {
    auto header = std::make_shared<platform::UIView>(platform::CGRect{0, 0, width, headerHeight});
    header->setAutoresizingMask(platform::UIViewAutoresizingFlexibleWidth);

    auto title = makeLabel({0, titleTop, width, titleHeight}, "Trivel 3",
                           platform::UIFont::fontWithName_size("HelveticaNeue-UltraLight", 45),
                           platform::UIColor::blackColor(), 1);
    title->shadowColor = platform::UIColor::whiteColor();
    title->shadowOffset = {0, 1};
    header->addSubview(title);

    header->addSubview(makeLabel({0, subtitleTop, width, subtitleHeight},
                                 "by Movane and Daxon\nThank you for your purchase.",
                                 platform::UIFont::systemFontOfSize(14), platform::UIColor::grayColor(), 2));
    return header;
}

}  // namespace trivel3
