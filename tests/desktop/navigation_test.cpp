// SPDX-License-Identifier: MIT
#include "tests/desktop/desk.h"

namespace desktop_tests {

using NavigationInAWindow = Desk;

TEST_F(NavigationInAWindow, everyPageOpensAndShowsItsRows) {
    const std::vector<QStringList> pages = {
        {"Advanced Options"},
        {"The Creators"},
        {"Advanced Options", "Quick Launcher"},
        {"Advanced Options", "Slider Actions"},
        {"Advanced Options", "Album Artwork"},
        {"Advanced Options", "Close All Apps"},
        {"Advanced Options", "Disable in Applications"},
    };
    // With both displays on, the Quick Launcher is greyed.
    writeSettings("<key>MinimalControlCenterEnabled</key><false/>");
    open();
    for (const QStringList& titles : pages) {
        openPage(titles);
        EXPECT_EQ(navigation().path(), titles);
        EXPECT_FALSE(rowLabels().isEmpty()) << titles.join(u'/').toStdString();
        while (navigation().canGoBack()) {
            ASSERT_TRUE(navigation().back());
            settle();
        }
    }
}

TEST_F(NavigationInAWindow, clickOnALinkPushesAndTheBackButtonPops) {
    open();
    click(row("Advanced Options"));
    ASSERT_TRUE(waitFor([this] { return title() == "Advanced Options"; }));
    settle();
    click(named(view().rootObject(), "Back to Trivel 3"));
    EXPECT_EQ(title(), "Trivel 3");
    EXPECT_EQ(rowLabels().first(), "Multi-Center");
}

TEST_F(NavigationInAWindow, poppedPageIsSeenToLeaveAndIsThenGone) {
    open(false);
    table().tap(lineOf("The Creators"));
    settle();
    ASSERT_EQ(navigation().rowCount(), 2);
    ASSERT_TRUE(waitFor([this] { return seenTable() && seenTable()->mapToScene({0, 0}).x() == 0; }));
    ASSERT_TRUE(navigation().back());
    EXPECT_EQ(navigation().rowCount(), 2) << "it is on its way out";
    EXPECT_TRUE(waitFor([this] { return navigation().rowCount() == 1; }));
}

TEST_F(NavigationInAWindow, reducedMotionPushesAndPopsAtOnce) {
    open(true);
    table().tap(lineOf("The Creators"));
    settle();
    EXPECT_EQ(seenTable()->mapToScene({0, 0}).x(), 0);
    navigation().back();
    settle();
    EXPECT_EQ(seenTable()->mapToScene({0, 0}).x(), 0);
    EXPECT_TRUE(waitFor([this] { return navigation().rowCount() == 1; }));
}

TEST_F(NavigationInAWindow, rememberedPathIsFollowed) {
    open();
    navigation().follow({"Advanced Options", "Album Artwork"});
    settle();
    EXPECT_EQ(title(), "Album Artwork");
    EXPECT_EQ(navigation().path(), QStringList({"Advanced Options", "Album Artwork"}));
}

TEST_F(NavigationInAWindow, pathThatLeadsNowhereStopsWhereItEnds) {
    open();
    navigation().follow({"Advanced Options", "No Such Page"});
    settle();
    EXPECT_EQ(navigation().path(), QStringList({"Advanced Options"}));
}

TEST_F(NavigationInAWindow, pathDoesNotRunTheActionsOfRows) {
    open();
    navigation().follow({"Fenwary Support"});
    settle();
    EXPECT_FALSE(navigation().isComposerShown());
}

}  // namespace desktop_tests
