// SPDX-License-Identifier: MIT
#include <cmath>

#include "tests/desktop/desk.h"

namespace desktop_tests {

class RowChange : public Desk {
protected:
    const QStringList conditions = {"Always", "If no Media is Playing", "If AirPlay is undetected",
                                    "If AirDrop is Off"};

    void openOptions(bool lessMotion) {
        open(lessMotion);
        openPage({"Advanced Options"});
        ASSERT_TRUE(waitFor([this] { return seenTable()->mapToScene({0, 0}).x() == 0; }));
    }

    // Whether every line begins where the one above it ends.
    bool linesAreGapless() {
        const auto all = lines();
        for (std::size_t i = 1; i < all.size(); ++i) {
            if (std::abs(all[i]->y() - all[i - 1]->y() - all[i - 1]->height()) > 0.01) return false;
        }
        return !all.empty();
    }
};

TEST_F(RowChange, rowsThatTheSwitchRemovesAreGone) {
    openOptions(true);
    ASSERT_TRUE(waitFor([this] { return shows("If AirDrop is Off"); }));
    clickSwitch("Minimal Display");
    for (const QString& label : conditions)
        EXPECT_FALSE(shows(label)) << label.toStdString();
    EXPECT_TRUE(waitFor([this] { return linesAreGapless(); }));
}

TEST_F(RowChange, rowsThatTheSwitchBringsBackAreThere) {
    openOptions(true);
    clickSwitch("Minimal Display");
    clickSwitch("Minimal Display");
    const QStringList labels = rowLabels();
    const qsizetype first = labels.indexOf("Minimal Display");
    EXPECT_EQ(labels.mid(first + 1, conditions.size()), conditions);
    EXPECT_TRUE(waitFor([this] { return linesAreGapless(); }));
}

TEST_F(RowChange, animatedRowsMoveAndEndInTheirPlaces) {
    openOptions(false);
    const double before = row("Open to Last App")->y();
    clickSwitch("Minimal Display");
    const double moving = row("Open to Last App")->y();
    EXPECT_GT(moving, before - 4 * 44) << "it has not jumped";
    ASSERT_TRUE(
        waitFor([&] { return std::abs(row("Open to Last App")->y() - (before - 4 * 44)) < 20 && linesAreGapless(); }));
    clickSwitch("Minimal Display");
    ASSERT_TRUE(waitFor([&] { return std::abs(row("Open to Last App")->y() - before) < 0.01 && linesAreGapless(); }));
    for (const QString& label : conditions)
        EXPECT_EQ(row(label)->opacity(), 1) << label.toStdString();
}

TEST_F(RowChange, rowIsShownGreyedWhenThePageSaysSo) {
    openOptions(true);
    EXPECT_FALSE(row("If AirDrop is Off")->property("usable").toBool());
    clickSwitch("Reachable Display");
    EXPECT_TRUE(row("If AirDrop is Off")->property("usable").toBool());
}

TEST_F(RowChange, tapMovesTheCheckmark) {
    open();
    openPage({"Advanced Options", "Album Artwork"});
    ASSERT_TRUE(row("After 1 second")->property("marked").toBool());
    click(row("After 5 seconds"));
    EXPECT_FALSE(row("After 1 second")->property("marked").toBool());
    EXPECT_TRUE(row("After 5 seconds")->property("marked").toBool());
    EXPECT_TRUE(settingIs("AlbumArtworkAutoDismissDelay", "<integer>5</integer>")) << settings();
}

TEST_F(RowChange, wholeGroupComesAndGoes) {
    open();
    openPage({"Advanced Options", "Album Artwork"});
    ASSERT_TRUE(waitFor([this] { return shows("After 1 second"); }));
    click(row("On Next"));
    click(row("On Previous"));
    EXPECT_FALSE(shows("After 1 second"));
    EXPECT_TRUE(waitFor([this] { return linesAreGapless(); }));
    click(row("On Play"));
    EXPECT_TRUE(shows("After 1 second"));
    EXPECT_TRUE(waitFor([this] { return linesAreGapless(); }));
}

}  // namespace desktop_tests
