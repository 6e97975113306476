// SPDX-License-Identifier: MIT
#include <QGuiApplication>

#include "tests/desktop/desk.h"

namespace desktop_tests {

/// A window that is wider than the phone that it shows: what there is to read and to touch stands in cards.
class WideWindow : public Desk {
protected:
    static constexpr double widest = 640;
    static constexpr double gap = 16;

    void openWide(QSize size = {800, 700}) {
        open();
        resize(size);
    }
    void resize(QSize size) {
        view().resize(size);
        ASSERT_TRUE(waitFor([&] { return view().rootObject()->size() == QSizeF(size); }));
        settle();
    }
    QRectF placeOf(QQuickItem* item) { return item->mapRectToScene({{0, 0}, item->size()}); }
    void expectInTheMiddle(const QRectF& place, const std::string& what) {
        EXPECT_EQ(place.width(), widest) << what;
        EXPECT_NEAR(place.center().x(), view().width() / 2.0, 0.5) << what;
    }
    QRgb colourAt(QPointF at) { return view().grabWindow().pixel(at.toPoint()); }
};

TEST_F(WideWindow, clampsRowsHeadersAndFootersAndPutsThemInTheMiddle) {
    openWide();
    for (const QStringList& path :
         {QStringList{}, {"The Creators"}, {"Advanced Options"}, {"Advanced Options", "Close All Apps"}}) {
        openPage(path);
        for (QQuickItem* line : lines())
            expectInTheMiddle(placeOf(line), path.join(u'/').toStdString());
        while (navigation().back()) {
        }
        settle();
    }
    expectInTheMiddle(placeOf(seenTable()->property("headerItem").value<QQuickItem*>()), "the header");
}

TEST_F(WideWindow, hasPagesLaidOutForTheirCards) {
    openWide();
    const auto header = navigation().current()->header();
    EXPECT_EQ(header.view->frame().width, widest);
    EXPECT_EQ(header.view->frame().height, 114);
    openPage({"The Creators"});
    for (QQuickItem* line : lines()) {
        const auto tree = line->property("tree");
        if (!tree.isValid()) continue;
        EXPECT_EQ(tree.value<hosts::desktop::ViewHandle>().view->frame().width, widest);
    }
}

TEST_F(WideWindow, leavesThePhonesOwnLookUntilThereIsRoomForCards) {
    openWide({351, 568});
    EXPECT_EQ(placeOf(row("Multi-Center")).width(), 351);
    resize({352, 568});
    EXPECT_EQ(placeOf(row("Multi-Center")).left(), gap);
    EXPECT_EQ(placeOf(row("Multi-Center")).width(), 320) << "never narrower than on the phone";
    resize({320, 568});
    EXPECT_EQ(placeOf(row("Multi-Center")).width(), 320);
}

TEST_F(WideWindow, clampsTheRowsOfATabletToo) {
    open(true, "tablet");
    expectInTheMiddle(placeOf(row("Multi-Center")), "at its own width");
}

TEST_F(WideWindow, drawsRoundCornersWhereACardBeginsAndEnds) {
    openWide();
    openPage({"Advanced Options"});
    const auto colourIn = [this](const QString& label, double x, double y) {
        QQuickItem* line = row(label);
        const QPointF at(x < 0 ? line->width() + x : x, y < 0 ? line->height() + y : y);
        return colourAt(line->mapToScene(at));
    };
    const QRgb page = colourAt({5, 200});
    EXPECT_EQ(colourIn("Minimal Display", 1, 1), page);
    EXPECT_EQ(colourIn("Minimal Display", -1, 1), page);
    EXPECT_NE(colourIn("Minimal Display", 1, -2), page) << "the card goes on";
    EXPECT_NE(colourIn("Always", 1, 1), page);
    EXPECT_NE(colourIn("Always", 1, -2), page);
    EXPECT_EQ(colourIn("If AirDrop is Off", 1, -2), page);
    EXPECT_EQ(colourIn("If AirDrop is Off", -1, -2), page);
}

TEST_F(WideWindow, actsOnTheWholeCardAndOnNothingBesideIt) {
    openWide();
    const double y = placeOf(row("Multi-Center")).center().y();
    click(view().rootObject(), {20, y});
    EXPECT_EQ(settings(), "");
    click(row("Multi-Center"), {4, 22});
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
}

TEST_F(WideWindow, keepsTheFocusFrameWithinTheCard) {
    openWide();
    press(Qt::Key_Down);
    const QImage withFocus = view().grabWindow();
    session->window().setTaste({});
    press(Qt::Key_Down);
    const QImage below = view().grabWindow();
    ASSERT_NE(withFocus, below);
    QRect changed;
    for (int y = 0; y < below.height(); ++y) {
        for (int x = 0; x < below.width(); ++x) {
            if (below.pixel(x, y) != withFocus.pixel(x, y)) changed |= QRect(x, y, 1, 1);
        }
    }
    EXPECT_GE(changed.left(), (view().width() - widest) / 2);
    EXPECT_LE(changed.right(), (view().width() + widest) / 2);
}

// The pane's texts read from left to right, whatever the desktop's do.
TEST_F(WideWindow, isTheSameWhereTheDesktopReadsFromRightToLeft) {
    const std::vector<QSize> sizes{{320, 568}, {800, 700}, {1200, 800}};
    std::vector<QImage> pictures;
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QGuiApplication::setLayoutDirection(direction);
        open();
        openPage({"Advanced Options"});
        for (const QSize size : sizes) {
            resize(size);
            pictures.push_back(view().grabWindow());
        }
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    for (std::size_t i = 0; i < sizes.size(); ++i)
        EXPECT_EQ(pictures[i], pictures[i + sizes.size()]) << sizes[i].width();
}

TEST_F(WideWindow, clampsWhatIsFoundAndThePhones) {
    openWide();
    navigation().find().begin("display");
    settle();
    QQuickItem* hit = named(view().rootObject(), "Reachable Display, Trivel 3 › Advanced Options");
    ASSERT_NE(hit, nullptr);
    expectInTheMiddle(placeOf(hit), "a hit");
    QQuickItem* closing = named(view().rootObject(), "Close");
    EXPECT_NEAR(placeOf(closing).right(), (view().width() + widest) / 2, 1);
    navigation().find().close();
    navigation().phones().begin();
    settle();
    hit =
        named(view().rootObject(), "Open Folder…, The root of a phone's file system, or a folder that looks like one");
    ASSERT_NE(hit, nullptr);
    expectInTheMiddle(placeOf(hit), "a phone");
}

TEST_F(WideWindow, clampsComposers) {
    openWide();
    table().tap(lineOf("Fenwary Support"));
    ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
    settle();
    const double left = (view().width() - widest) / 2;
    EXPECT_NEAR(placeOf(named(view().rootObject(), "Cancel")).left(), left, 1);
    EXPECT_NEAR(placeOf(named(view().rootObject(), "Send")).right(), left + widest, 1);
    EXPECT_GE(placeOf(named(view().rootObject(), "Save Draft")).left(), left);
}

TEST_F(WideWindow, clampsBanners) {
    openWide();
    navigation().tell({.text = "The phone is tired", .isProblem = true});
    settle();
    const double left = (view().width() - widest) / 2;
    QQuickItem* closing = named(view().rootObject(), "Close");
    ASSERT_NE(closing, nullptr);
    EXPECT_LE(placeOf(closing).right(), left + widest);
    EXPECT_GE(placeOf(closing).left(), left);
}

}  // namespace desktop_tests
