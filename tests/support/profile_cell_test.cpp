// SPDX-License-Identifier: MIT
#include "support/profile_cell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/kit/test_platform.h"

namespace trivel3 {
namespace {

using platform::CGRect;
using platform::UIFont;
using platform::UITableViewCellStyle;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double precision = 0.0005;

void expectFrame(const platform::UIView& view, const CGRect& frame) {
    EXPECT_NEAR(view.frame().x, frame.x, precision);
    EXPECT_NEAR(view.frame().y, frame.y, precision);
    EXPECT_NEAR(view.frame().width, frame.width, precision);
    EXPECT_NEAR(view.frame().height, frame.height, precision);
}

class ProfileCell : public testing::Test {
protected:
    std::shared_ptr<KavixPreferencesProfileCell> makeCell(UITableViewCellStyle style = UITableViewCellStyle::standard) {
        return std::make_shared<KavixPreferencesProfileCell>(platform.services(), style, "profile");
    }

    /// Without an accessory, the content view is as large as the cell.
    std::shared_ptr<KavixPreferencesProfileCell> laidOut(double scale, double width, double height) {
        platform.services().screen.scale = scale;
        auto cell = makeCell();
        cell->setFrame({0, 0, width, height});
        cell->layoutSubviews();
        return cell;
    }

    static void showDaxon(KavixPreferencesProfileCell& cell) {
        cell.loadImage_nameText_handleText_infoText("Daxon", "Daxon", "(@Daxon_QT)", "A\nB\nC");
    }
    static void clear(KavixPreferencesProfileCell& cell) {
        cell.loadImage_nameText_handleText_infoText(std::nullopt, std::nullopt, std::nullopt, std::nullopt);
    }
    static void expectNobody(const KavixPreferencesProfileCell& cell) {
        EXPECT_FALSE(cell.avatarView()->image);
        EXPECT_FALSE(cell.nameLabel()->text());
        EXPECT_THAT(cell.nameLabel()->attributedText(), IsEmpty());
        EXPECT_FALSE(cell.infoLabel()->text());
    }

    kit::TestPlatform platform;
};

TEST_F(ProfileCell, isOfTheSubtitleStyleWhateverIsAskedFor) {
    for (const auto style : {UITableViewCellStyle::standard, UITableViewCellStyle::value1, UITableViewCellStyle::value2,
                             UITableViewCellStyle::subtitle}) {
        const auto cell = makeCell(style);
        EXPECT_EQ(cell->style(), UITableViewCellStyle::subtitle);
        EXPECT_TRUE(cell->detailTextLabel());
        EXPECT_EQ(cell->reuseIdentifier(), "profile");
    }
}

TEST_F(ProfileCell, addsItsPartsToTheContentViewInOrder) {
    const auto cell = makeCell();
    auto views = cell->contentView()->subviews();
    ASSERT_GE(views.size(), 4u);
    views.erase(views.begin(), views.end() - 4);
    EXPECT_THAT(views, ElementsAre(cell->avatarView(), cell->twitterView(), cell->nameLabel(), cell->infoLabel()));
}

TEST_F(ProfileCell, hasPartsWithoutASizeBeforeItIsLaidOut) {
    const auto cell = makeCell();
    expectFrame(*cell->avatarView(), {});
    expectFrame(*cell->twitterView(), {});
    expectFrame(*cell->nameLabel(), {});
    expectFrame(*cell->infoLabel(), {});
}

TEST_F(ProfileCell, setsUpHowItsPartsLook) {
    const auto cell = makeCell();
    EXPECT_EQ(cell->avatarView()->cornerRadius(), 30);
    EXPECT_TRUE(cell->avatarView()->clipsToBounds());
    EXPECT_EQ(cell->nameLabel()->textColor, platform::UIColor::blackColor());
    EXPECT_EQ(cell->infoLabel()->font, UIFont::systemFontOfSize(14));
    EXPECT_EQ(cell->infoLabel()->textColor, (platform::UIColor{0, 0, 0, 0.5}));
    EXPECT_EQ(cell->infoLabel()->numberOfLines, 3);
    EXPECT_EQ(cell->infoLabel()->lineBreakMode, platform::NSLineBreakMode::byWordWrapping);
}

TEST_F(ProfileCell, showsAPerson) {
    const auto cell = makeCell();
    showDaxon(*cell);
    ASSERT_TRUE(cell->avatarView()->image);
    EXPECT_EQ(cell->avatarView()->image->name(), "Daxon");
    EXPECT_THAT(cell->nameLabel()->attributedText(),
                ElementsAre(platform::TextRun{"Daxon", UIFont::boldSystemFontOfSize(18)},
                            platform::TextRun{" ", UIFont::systemFontOfSize(16)},
                            platform::TextRun{"(@Daxon_QT)", UIFont::systemFontOfSize(16)}));
    EXPECT_EQ(cell->infoLabel()->text(), "A\nB\nC");
}

TEST_F(ProfileCell, showsNoNameWithoutAHandleAndNoHandleWithoutAName) {
    const auto cell = makeCell();
    cell->loadImage_nameText_handleText_infoText("Daxon", "Daxon", std::nullopt, "info");
    EXPECT_FALSE(cell->nameLabel()->text());
    EXPECT_EQ(cell->infoLabel()->text(), "info");
    cell->loadImage_nameText_handleText_infoText("Daxon", std::nullopt, "(@Daxon_QT)", "info");
    EXPECT_FALSE(cell->nameLabel()->text());
    EXPECT_TRUE(cell->avatarView()->image);
}

TEST_F(ProfileCell, keepsWhatItShowedUntilItIsFilledAgain) {
    const auto cell = makeCell();
    showDaxon(*cell);
    cell->layoutSubviews();
    EXPECT_TRUE(cell->avatarView()->image);
    EXPECT_EQ(cell->nameLabel()->text(), "Daxon (@Daxon_QT)");
    clear(*cell);
    expectNobody(*cell);
}

TEST_F(ProfileCell, clearsAnOldNameWhenTheNewPersonHasNoHandle) {
    const auto cell = makeCell();
    showDaxon(*cell);
    cell->loadImage_nameText_handleText_infoText(std::nullopt, "Movane", std::nullopt, std::nullopt);
    expectNobody(*cell);
}

TEST_F(ProfileCell, showsTheBadgeOnEveryRow) {
    const auto cell = makeCell();
    const auto expectBadge = [&] {
        ASSERT_TRUE(cell->twitterView()->image);
        EXPECT_EQ(cell->twitterView()->image->name(), "Twitter");
    };
    expectBadge();
    showDaxon(*cell);
    expectBadge();
    clear(*cell);
    expectBadge();
}

TEST_F(ProfileCell, loadsImagesMadeForTheScreensScale) {
    for (const double scale : {1.0, 2.0, 3.0}) {
        platform.services().screen.scale = scale;
        const auto cell = makeCell();
        showDaxon(*cell);
        EXPECT_EQ(cell->avatarView()->image->scale(), scale);
        EXPECT_EQ(cell->twitterView()->image->scale(), scale);
        EXPECT_EQ(cell->avatarView()->image->size(), (platform::CGSize{60, 60}));
        EXPECT_EQ(cell->twitterView()->image->size(), (platform::CGSize{19, 15}));
    }
}

TEST_F(ProfileCell, showsNoAvatarForAnImageThatIsNotThere) {
    const auto cell = makeCell();
    showDaxon(*cell);
    cell->loadImage_nameText_handleText_infoText("Nobody", "Nobody", "(@nobody)", std::nullopt);
    EXPECT_FALSE(cell->avatarView()->image);
    EXPECT_EQ(cell->nameLabel()->text(), "Nobody (@nobody)");
}

TEST_F(ProfileCell, staysWholeWithoutItsBundle) {
    kit::TestPlatform bare(kit::tallPhone, "/no such folder");
    KavixPreferencesProfileCell cell(bare.services(), UITableViewCellStyle::standard, "profile");
    showDaxon(cell);
    EXPECT_FALSE(cell.avatarView()->image);
    EXPECT_FALSE(cell.twitterView()->image);
    EXPECT_EQ(cell.nameLabel()->text(), "Daxon (@Daxon_QT)");
}

TEST_F(ProfileCell, isToldByThePersonsPartsAloneWhileItShowsOne) {
    const auto cell = makeCell();
    cell->textLabel()->setText("Follow Fenwary");
    EXPECT_THAT(cell->accessibilityElements(), IsEmpty());
    showDaxon(*cell);
    EXPECT_THAT(cell->accessibilityElements(), ElementsAre(cell->avatarView(), cell->nameLabel(), cell->infoLabel()));
    EXPECT_EQ(cell->textLabel()->text(), "Follow Fenwary") << "beneath";
    clear(*cell);
    EXPECT_THAT(cell->accessibilityElements(), IsEmpty());
}

TEST_F(ProfileCell, laysItsPartsOutAtScale1) {
    const auto cell = laidOut(1, 320, 106);
    expectFrame(*cell->avatarView(), {9, 18, 60, 60});
    // (106 − 15) / 2 = 45.5 and 60.5, both rounded up.
    expectFrame(*cell->twitterView(), {306, 46, 19, 15});
    expectFrame(*cell->nameLabel(), {79, 18, 227, 22});
    expectFrame(*cell->infoLabel(), {79, 38, 227, 55});
}

TEST_F(ProfileCell, laysItsPartsOutAtScale2) {
    const auto cell = laidOut(2, 320, 106);
    expectFrame(*cell->avatarView(), {9, 18, 60, 60});
    expectFrame(*cell->twitterView(), {306, 45.5, 19, 15});
    expectFrame(*cell->nameLabel(), {79, 18, 227, 22});
    expectFrame(*cell->infoLabel(), {79, 37.5, 227, 55});
}

TEST_F(ProfileCell, laysItsPartsOutAtScale3) {
    const auto cell = laidOut(3, 414, 106);
    expectFrame(*cell->avatarView(), {9, 18, 60, 60});
    // 45.5 and 60.5 points are 136.5 and 181.5 pixels, rounded up to 137 and 182.
    expectFrame(*cell->twitterView(), {400, 45.667, 19, 15});
    expectFrame(*cell->nameLabel(), {79, 18, 321, 22});
    expectFrame(*cell->infoLabel(), {79, 37.667, 321, 55});
}

TEST_F(ProfileCell, endsTheLabelsWhereTheRoundedBadgeBegins) {
    // 320.3 − 14 = 306.3 points: 613 pixels at scale 2.
    const auto cell = laidOut(2, 320.3, 106);
    EXPECT_NEAR(cell->twitterView()->frame().x, 306.5, precision);
    EXPECT_NEAR(cell->nameLabel()->frame().width, 306.5 - 79, precision);
    EXPECT_NEAR(cell->infoLabel()->frame().width, 306.5 - 79, precision);
}

TEST_F(ProfileCell, letsTheBadgeReachOverTheContentsEdge) {
    const auto cell = laidOut(2, 320, 44);
    const CGRect badge = cell->twitterView()->frame();
    EXPECT_NEAR(badge.x + badge.width, 325, precision);
    EXPECT_NEAR(badge.y, 14.5, precision);
}

TEST_F(ProfileCell, measuresFromTheContentViewThatTheAccessoryLeaves) {
    auto cell = makeCell();
    cell->accessoryType = platform::UITableViewCellAccessoryType::disclosureIndicator;
    cell->setFrame({0, 0, 320, 106});
    cell->layoutSubviews();
    const double content = cell->contentView()->bounds().width;
    ASSERT_LT(content, 320);
    EXPECT_NEAR(cell->twitterView()->frame().x, content - 14, precision);
}

TEST_F(ProfileCell, followsANewSize) {
    auto cell = laidOut(2, 320, 106);
    cell->setFrame({0, 0, 375, 44});
    cell->layoutSubviews();
    expectFrame(*cell->twitterView(), {361, 14.5, 19, 15});
    expectFrame(*cell->nameLabel(), {79, 18, 282, 22});
}

}  // namespace
}  // namespace trivel3
