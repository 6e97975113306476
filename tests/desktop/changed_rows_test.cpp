// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QImage>
#include <QTest>

#include "tests/desktop/desk.h"
#include "tests/desktop/patches.h"

namespace desktop_tests {

using hosts::desktop::TableModel;

/// Rows that say whether they are at their defaults.
class ChangedRows : public Desk {
protected:
    bool isMarked(const QString& label) {
        return table().data(table().index(lineOf(label)), TableModel::ChangedRole).toBool();
    }
    // The rows of the page, on the screen or not, that say so.
    QStringList marked() {
        QStringList labels;
        for (int i = table().rowBeside(-1, 1); i >= 0; i = table().rowBeside(i, 1)) {
            if (table().data(table().index(i), TableModel::ChangedRole).toBool())
                labels.append(table().data(table().index(i), TableModel::TextRole).toString());
        }
        return labels;
    }
    QString told(const QString& label) { return table().spoken(lineOf(label)).description; }
};

TEST_F(ChangedRows, atTheirDefaultsBearNoMark) {
    writeSettings("<key>MultiCenter</key><true/><key>Mine</key><true/>");
    open();
    EXPECT_EQ(marked(), QStringList()) << "stored or not";
    openPage({"Advanced Options", "Slider Actions"});
    EXPECT_EQ(marked(), QStringList());
}

TEST_F(ChangedRows, bearTheMarkWhileASwitchIsNotAsItWas) {
    open();
    row("Hot Corners");
    const QImage before = view().grabWindow();
    clickSwitch("Hot Corners");
    ASSERT_TRUE(settingIs("HotCorners", "<false/>"));
    EXPECT_EQ(marked(), QStringList{"Hot Corners"});
    clickSwitch("Hot Corners");
    ASSERT_TRUE(settingIs("HotCorners", "<true/>"));
    EXPECT_EQ(marked(), QStringList());
    // Where it is on no row.
    QTest::mouseMove(&view(), QPoint(100, 20));
    EXPECT_TRUE(waitFor([&] { return view().grabWindow() == before; })) << "to the last pixel";
}

TEST_F(ChangedRows, bearTheMarkForAValueOfAnotherKind) {
    writeSettings("<key>MultiCenter</key><integer>1</integer>");
    open();
    EXPECT_EQ(marked(), QStringList{"Multi-Center"});
}

TEST_F(ChangedRows, ofASettingThatIsChosenTheCheckedOneBearsTheMark) {
    open();
    openPage({"Advanced Options", "Slider Actions"});
    click(row("Set Volume to Minimum"));
    ASSERT_TRUE(settingIs("SliderActionsVolume", "<integer>0"));
    EXPECT_EQ(marked(), QStringList{"Set Volume to Minimum"});
    click(row("Set Volume to Maximum"));
    EXPECT_EQ(marked(), QStringList{"Set Volume to Maximum"});
    click(row("Switch to Ringer Volume"));
    EXPECT_EQ(marked(), QStringList());
}

TEST_F(ChangedRows, ofFlagsThoseThatAreNotAsByDefaultBearTheMark) {
    open();
    openPage({"Advanced Options", "Album Artwork"});
    click(row("On Play"));
    EXPECT_EQ(marked(), QStringList{"On Play"});
    click(row("On Next"));
    EXPECT_EQ(marked(), (QStringList{"On Play", "On Next"})) << "one is on, the other off";
}

TEST_F(ChangedRows, withoutADefaultBearNone) {
    writeSettings("<key>OpenToLastApp</key><true/><key>OpenToLastAppWithQS</key><true/>");
    open();
    openPage({"Advanced Options"});
    EXPECT_TRUE(isMarked("Open to Last App"));
    EXPECT_FALSE(isMarked("Apply to Quick Switcher"));
}

TEST_F(ChangedRows, followWhatAnotherProgramChanges) {
    open();
    session->watchFiles();
    writeSettings("<key>QuickSwitcher</key><false/>");
    EXPECT_TRUE(waitFor([this] { return isMarked("Quick Switcher"); }));
    writeSettings("<key>QuickSwitcher</key><true/>");
    EXPECT_TRUE(waitFor([this] { return !isMarked("Quick Switcher"); }));
}

TEST_F(ChangedRows, areToldToThoseWhoCannotSeeThem) {
    open();
    const QString footer = told("Hot Corners");
    EXPECT_NE(footer, "");
    clickSwitch("Hot Corners");
    EXPECT_EQ(told("Hot Corners"), "Not at its default. " + footer);
}

TEST_F(ChangedRows, areSeenInEveryLook) {
    writeSettings("<key>HotCorners</key><false/>");
    for (const bool isDark : {false, true}) {
        for (const bool isHigh : {false, true}) {
            open();
            session->window().setDark(isDark);
            session->window().setHighContrast(isHigh);
            settle();
            QQuickItem* const changed = row("Hot Corners");
            const QPoint corner = changed->mapToScene({0, 0}).toPoint();
            const QImage margin = view().grabWindow().copy(QRect(corner, QSize(15, int(changed->height()))));
            const QRgb ground = margin.pixel(1, margin.height() / 2 + 12);
            int marks = 0;
            for (int x = 0; x < margin.width(); ++x)
                marks += margin.pixel(x, margin.height() / 2) != ground ? 1 : 0;
            EXPECT_GE(marks, isHigh ? 7 : 5) << isDark << isHigh;
            session.reset();
        }
    }
}

}  // namespace desktop_tests
