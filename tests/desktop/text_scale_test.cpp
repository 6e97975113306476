// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "hosts/desktop/drawing/grown_layout.h"
#include "hosts/desktop/drawing/label_layout.h"
#include "tests/desktop/desk.h"

namespace desktop_tests {
namespace {

std::vector<QQuickItem*> textsIn(QQuickItem* within) {
    std::vector<QQuickItem*> found;
    if (!within->isVisible()) return found;
    if (within->inherits("QQuickText") && !within->property("text").toString().isEmpty()) found.push_back(within);
    for (QQuickItem* child : within->childItems()) {
        for (QQuickItem* text : textsIn(child))
            found.push_back(text);
    }
    return found;
}

std::shared_ptr<platform::UILabel> label(platform::CGRect frame, const char* text, double size) {
    auto made = std::make_shared<platform::UILabel>(frame);
    made->setText(text);
    made->font = platform::UIFont::systemFontOfSize(size);
    return made;
}

}  // namespace

class TextScale : public Desk {
protected:
    void scale(double factor) {
        session->window().setTextScale(factor);
        layOut();
    }

    // Lines find their places as they are drawn, and what they need is known only then.
    void layOut() {
        for (int i = 0; i < 2; ++i) {
            settle();
            view().grabWindow();
        }
    }

    // Every text of the page is whole, within its line, and clear of what else stands there.
    void expectWholeTexts(const std::string& where) {
        for (QQuickItem* line : lines()) {
            for (QQuickItem* text : textsIn(line)) {
                const std::string what = where + ": " + text->property("text").toString().toStdString();
                EXPECT_FALSE(text->property("truncated").toBool()) << what;
                const double height = text->property("contentHeight").toDouble();
                const QRectF place = text->mapRectToItem(line, {0, 0, text->width(), height});
                EXPECT_LE(height, line->height()) << what;
                EXPECT_GE(place.top(), -0.5) << what;
                EXPECT_LE(place.right(), line->width() + 0.5) << what;
            }
        }
    }

    bool isInView(QQuickItem* line) {
        const QRectF place = line->mapRectToItem(seenTable(), {0, 0, line->width(), line->height()});
        return place.bottom() > 0 && place.top() < seenTable()->height();
    }

    void expectGaplessLines(const std::string& where) {
        auto all = lines();
        // The row with the focus is kept when it is far off.
        std::erase_if(all, [this](QQuickItem* line) { return line->height() == 0 || !isInView(line); });
        for (std::size_t i = 1; i < all.size(); ++i)
            EXPECT_NEAR(all[i]->y(), all[i - 1]->y() + all[i - 1]->height(), 0.01) << where;
    }
};

TEST_F(TextScale, leavesThePhonesMeasuresAloneAtOne) {
    open();
    for (const char* name : {"Multi-Center", "Advanced Options"})
        EXPECT_EQ(row(name)->height(), 44) << name;
    EXPECT_EQ(seenTable()->property("headerItem").value<QQuickItem*>()->height(), 114);
}

TEST_F(TextScale, makesTextsLargerAndRowsHigher) {
    open();
    QQuickItem* line = row("Multi-Center");
    const double text = textsIn(line).front()->height();
    scale(2);
    line = row("Multi-Center");
    EXPECT_GT(line->height(), 55);
    EXPECT_EQ(textsIn(line).front()->property("font").value<QFont>().pixelSize(), 34);
    EXPECT_GT(textsIn(line).front()->height(), text);
    scale(1);
    EXPECT_EQ(row("Multi-Center")->height(), 44);
}

TEST_F(TextScale, cutsAndOverlapsNothingOnAnyPage) {
    open();
    const std::vector<QStringList> paths = {{},
                                            {"The Creators"},
                                            {"Advanced Options"},
                                            {"Advanced Options", "Album Artwork"},
                                            {"Advanced Options", "Close All Apps"},
                                            {"Advanced Options", "Disable in Applications"}};
    for (const QStringList& path : paths) {
        openPage(path);
        for (double factor : {0.8, 1.0, 1.25, 1.5, 2.0, 3.0}) {
            scale(factor);
            const std::string where = title().toStdString() + " at " + std::to_string(factor);
            for (int step = 0; step < 3; ++step) {
                expectWholeTexts(where);
                expectGaplessLines(where);
                press(Qt::Key_End);
                layOut();
            }
        }
        scale(1);
        for (qsizetype i = 0; i < path.size(); ++i)
            navigation().back();
        settle();
    }
}

TEST_F(TextScale, growsRowsOfAPagesOwnMakingWithTheirTexts) {
    open();
    openPage({"The Creators"});
    const double usual = lines().at(1)->height();
    scale(1.5);
    EXPECT_GT(lines().at(1)->height(), 1.2 * usual);
    scale(0.8);
    EXPECT_EQ(lines().at(1)->height(), usual);
}

TEST_F(TextScale, makesRoomForTheBar) {
    open();
    openPage({"Advanced Options"});
    scale(2);
    const double top = seenTable()->mapToScene({0, 0}).y();
    EXPECT_GT(top, 60);
    EXPECT_NEAR(top + seenTable()->height(), view().height(), 0.5);
}

TEST_F(TextScale, narrowWindowWrapsLabelsThatDoNotFit) {
    open();
    view().resize(260, 480);
    openPage({"Advanced Options"});
    layOut();
    expectWholeTexts("260 points wide");
    openPage({"Close All Apps"});
    layOut();
    expectWholeTexts("260 points wide");
    EXPECT_GT(row("Exclude Currently Playing")->height(), 44);
}

TEST(GrownLayout, movesWhatStandsBelowAndKeepsWhatStandsBesideInTheMiddle) {
    platform::UIView tree({0, 0, 200, 100});
    auto upper = label({50, 10, 100, 20}, "Name", 14);
    auto lower = label({50, 40, 100, 50}, "several words that take two lines or three", 14);
    lower->numberOfLines = 3;
    auto picture = std::make_shared<platform::UIImageView>(platform::CGRect{0, 30, 40, 40});
    for (const auto& part : std::vector<std::shared_ptr<platform::UIView>>{upper, lower, picture})
        tree.addSubview(part);
    const hosts::desktop::GrownLayout layout(tree, 2);
    auto placed = [&layout](const platform::UIView& part) {
        const platform::CGRect& frame = part.frame();
        return layout.placed(part, {frame.x, frame.y, frame.width, frame.height});
    };
    EXPECT_GT(layout.height(), 130);
    EXPECT_EQ(placed(*upper).top(), 10);
    EXPECT_GE(placed(*lower).top(), placed(*upper).bottom());
    const double needed = hosts::desktop::LabelLayout(*lower, {100, 50}, 2).textHeight();
    EXPECT_GE(placed(*lower).height(), needed);
    EXPECT_EQ(placed(*picture).size(), QSizeF(40, 40));
    EXPECT_NEAR(placed(*picture).center().y(), layout.height() / 2, 1);
}

TEST(GrownLayout, isThePagesOwnAtTheUsualScaleAndBelow) {
    platform::UIView tree({0, 0, 200, 100});
    tree.addSubview(label({0, 10, 30, 20}, "far too long for it", 14));
    for (double scale : {0.5, 1.0})
        EXPECT_EQ(hosts::desktop::GrownLayout(tree, scale).height(), 100);
}

TEST(GrownLayout, growsAtTheUsualScaleTooWhereTextsWrap) {
    platform::UIView tree({0, 0, 200, 100});
    tree.addSubview(label({0, 10, 30, 20}, "far too long for it", 14));
    EXPECT_GT(hosts::desktop::GrownLayout(tree, 1, true).height(), 100);
    platform::UIView roomy({0, 0, 200, 100});
    roomy.addSubview(label({0, 10, 190, 20}, "fits", 14));
    EXPECT_EQ(hosts::desktop::GrownLayout(roomy, 1, true).height(), 100);
}

}  // namespace desktop_tests
