// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/table_view.h"
#include "tests/kit/print.h"

namespace list_test {
namespace {

using platform::CGRect;
using platform::UIView;
using testing::ElementsAre;
using testing::IsEmpty;

struct Resize {
    unsigned mask;
    CGRect before;
    CGRect after;
};

/// A subview in a 100 × 100 view that becomes 200 wide and 50 high.
class Autoresizing : public testing::TestWithParam<Resize> {};

TEST_P(Autoresizing, splitsAChangeAmongTheFlexibleParts) {
    UIView outer({0, 0, 100, 100});
    auto inner = std::make_shared<UIView>(GetParam().before);
    inner->setAutoresizingMask(GetParam().mask);
    outer.addSubview(inner);
    outer.setFrame({0, 0, 200, 50});
    EXPECT_EQ(inner->frame(), GetParam().after);
}

constexpr unsigned left = platform::UIViewAutoresizingFlexibleLeftMargin;
constexpr unsigned width = platform::UIViewAutoresizingFlexibleWidth;
constexpr unsigned right = platform::UIViewAutoresizingFlexibleRightMargin;
constexpr unsigned top = platform::UIViewAutoresizingFlexibleTopMargin;
constexpr unsigned height = platform::UIViewAutoresizingFlexibleHeight;
constexpr unsigned bottom = platform::UIViewAutoresizingFlexibleBottomMargin;
constexpr CGRect middle = {25, 20, 50, 60};

INSTANTIATE_TEST_SUITE_P(ByMask, Autoresizing,
                         testing::Values(Resize{0, middle, middle}, Resize{width, middle, {25, 20, 150, 60}},
                                         Resize{left, middle, {125, 20, 50, 60}}, Resize{right, middle, middle},
                                         Resize{left | right, middle, {75, 20, 50, 60}},
                                         Resize{left | width | right, middle, {50, 20, 100, 60}},
                                         Resize{height, middle, {25, 20, 50, 10}},
                                         Resize{top | height | bottom, middle, {25, 10, 50, 30}},
                                         Resize{bottom, middle, middle},
                                         Resize{width | height, {0, 0, 100, 100}, {0, 0, 200, 50}},
                                         // Parts that measure nothing share the change evenly.
                                         Resize{left | right, {0, 0, 100, 10}, {50, 0, 100, 10}}));

TEST(Views, leaveTheirSubviewsWhenTheyOnlyMove) {
    UIView outer({0, 0, 100, 100});
    auto inner = std::make_shared<UIView>(middle);
    inner->setAutoresizingMask(width | height);
    outer.addSubview(inner);
    outer.setFrame({30, 40, 100, 100});
    EXPECT_EQ(inner->frame(), middle);
    EXPECT_EQ(outer.bounds(), (CGRect{0, 0, 100, 100}));
}

TEST(Views, passAChangeOnToTheViewsWithin) {
    UIView outer({0, 0, 100, 100});
    auto inner = std::make_shared<UIView>(CGRect{0, 0, 100, 100});
    auto innermost = std::make_shared<UIView>(CGRect{10, 10, 80, 80});
    inner->setAutoresizingMask(width);
    innermost->setAutoresizingMask(width);
    inner->addSubview(innermost);
    outer.addSubview(inner);
    outer.setFrame({0, 0, 160, 100});
    EXPECT_EQ(innermost->frame(), (CGRect{10, 10, 140, 80}));
}

TEST(Views, comeBackToTheirSizeWithTheScreen) {
    UIView outer({0, 0, 320, 114});
    auto inner = std::make_shared<UIView>(CGRect{0, 10, 320, 53});
    inner->setAutoresizingMask(width);
    outer.addSubview(inner);
    for (const double turned : {568.0, 320.0, 568.0, 320.0})
        outer.setFrame({0, 0, turned, 114});
    EXPECT_EQ(inner->frame(), (CGRect{0, 10, 320, 53}));
}

TEST(Views, keepTheirSubviewsInOrder) {
    UIView outer;
    auto first = std::make_shared<UIView>();
    auto second = std::make_shared<UIView>();
    outer.addSubview(first);
    outer.addSubview(second);
    EXPECT_THAT(outer.subviews(), ElementsAre(first, second));
}

TEST(Tables, stretchTheirHeaderView) {
    platform::UITableView table({0, 0, 320, 568}, platform::UITableViewStyle::grouped);
    auto header = std::make_shared<UIView>(CGRect{0, 0, 320, 114});
    auto label = std::make_shared<UIView>(CGRect{0, 10, 320, 53});
    label->setAutoresizingMask(width);
    header->addSubview(label);
    table.setTableHeaderView(header);
    table.setFrame({0, 0, 568, 320});
    EXPECT_EQ(header->frame(), (CGRect{0, 0, 568, 114}));
    EXPECT_EQ(label->frame(), (CGRect{0, 10, 568, 53}));
}

TEST(Tables, stretchTheirHeaderViewWithinAView) {
    UIView outer({0, 0, 320, 568});
    auto table = std::make_shared<platform::UITableView>(CGRect{0, 0, 320, 568}, platform::UITableViewStyle::plain);
    table->setAutoresizingMask(width | height);
    table->setTableHeaderView(std::make_shared<UIView>(CGRect{0, 0, 320, 114}));
    outer.addSubview(table);
    outer.setFrame({0, 0, 568, 320});
    EXPECT_EQ(table->tableHeaderView()->frame(), (CGRect{0, 0, 568, 114}));
}

TEST(Tables, needNeitherSourceNorDelegate) {
    platform::UITableView table({0, 0, 320, 568}, platform::UITableViewStyle::plain);
    EXPECT_EQ(table.produceCellForRowAtIndexPath({0, 0}), nullptr);
    EXPECT_FALSE(table.touchRowAtIndexPath({0, 0}));
}

TEST(Tables, handACellOutAgainByItsIdentifier) {
    platform::UITableView table({0, 0, 320, 568}, platform::UITableViewStyle::plain);
    using platform::UITableViewCell;
    auto cell = std::make_shared<UITableViewCell>(platform::UITableViewCellStyle::standard, "kind");
    table.enqueueReusableCell(cell);
    table.enqueueReusableCell(nullptr);
    table.enqueueReusableCell(std::make_shared<UITableViewCell>(platform::UITableViewCellStyle::standard, ""));
    EXPECT_EQ(table.dequeueReusableCellWithIdentifier("other"), nullptr);
    EXPECT_EQ(table.dequeueReusableCellWithIdentifier(""), nullptr);
    EXPECT_EQ(table.dequeueReusableCellWithIdentifier("kind"), cell);
    EXPECT_EQ(table.dequeueReusableCellWithIdentifier("kind"), nullptr);
}

TEST(Labels, showPlainOrAttributedText) {
    platform::UILabel label;
    EXPECT_EQ(label.text(), std::nullopt);
    label.setText("plain");
    EXPECT_EQ(label.text(), "plain");
    label.setAttributedText({{"at", platform::UIFont::boldSystemFontOfSize(12)}, {"tributed", {}}});
    EXPECT_EQ(label.text(), "attributed");
    EXPECT_EQ(label.attributedText().size(), 2u);
    label.setText("plain again");
    EXPECT_EQ(label.text(), "plain again");
    EXPECT_THAT(label.attributedText(), IsEmpty());
    label.setText(std::nullopt);
    EXPECT_EQ(label.text(), std::nullopt);
}

std::shared_ptr<const platform::UIImage> picture(std::uint32_t wide, std::uint32_t high, double scale) {
    return platform::UIImage::fromPixels("picture", wide, high, std::vector<std::uint8_t>(4u * wide * high), scale);
}

TEST(Images, measureInPoints) {
    EXPECT_EQ(picture(30, 15, 3)->size(), (platform::CGSize{10, 5}));
    EXPECT_EQ(platform::UIImageView::initWithImage(picture(30, 15, 3))->frame(), (CGRect{0, 0, 10, 5}));
    EXPECT_EQ(platform::UIImageView::initWithImage(nullptr)->frame(), (CGRect{0, 0, 0, 0}));
}

TEST(Images, holdAsManyPixelsAsTheySay) {
    EXPECT_FALSE(platform::UIImage::fromPixels("short", 2, 2, std::vector<std::uint8_t>(15), 1));
    EXPECT_FALSE(platform::UIImage::fromPixels("odd", 2, 2, std::vector<std::uint8_t>(17), 1));
    // As many bytes as a 64-bit product of these would make of them: none.
    EXPECT_FALSE(platform::UIImage::fromPixels("huge", 1u << 31, 1u << 31, {}, 1));
}

TEST(Buttons, fitTheirImageAndKeepTheirOrigin) {
    platform::UIButton button({5, 6, 0, 0});
    button.setImage_forState(picture(48, 44, 2), platform::UIControlStateNormal);
    button.sizeToFit();
    EXPECT_EQ(button.frame(), (CGRect{5, 6, 24, 22}));
    button.setImage_forState(nullptr, platform::UIControlStateNormal);
    button.sizeToFit();
    EXPECT_EQ(button.frame(), (CGRect{5, 6, 0, 0}));
}

TEST(Buttons, tellEachTargetOfItsOwnEvents) {
    platform::UIButton button;
    std::vector<std::string> told;
    button.addTarget_action_forControlEvents([&told](platform::UIButton&) { told.push_back("touch"); },
                                             platform::UIControlEventTouchUpInside);
    button.addTarget_action_forControlEvents([&told](platform::UIButton&) { told.push_back("other"); }, 1u);
    button.addTarget_action_forControlEvents([&told](platform::UIButton&) { told.push_back("both"); }, 65u);
    button.sendActionsForControlEvents(platform::UIControlEventTouchUpInside);
    EXPECT_THAT(told, ElementsAre("touch", "both"));
    EXPECT_EQ(platform::UIControlEventTouchUpInside, 64u);
}

}  // namespace
}  // namespace list_test
