// SPDX-License-Identifier: MIT
#include <QAccessible>

#include "tests/desktop/desk.h"

namespace desktop_tests {

class Accessibility : public Desk {
protected:
    static QAccessibleInterface* of(QQuickItem* item) { return QAccessible::queryAccessibleInterface(item); }
};

TEST_F(Accessibility, switchIsACheckBoxWithItsState) {
    open();
    QAccessibleInterface* access = of(row("Multi-Center"));
    ASSERT_NE(access, nullptr);
    EXPECT_EQ(access->role(), QAccessible::CheckBox);
    EXPECT_EQ(access->text(QAccessible::Name), "Multi-Center");
    EXPECT_TRUE(access->state().checkable);
    EXPECT_TRUE(access->state().checked);
    clickSwitch("Multi-Center");
    EXPECT_FALSE(access->state().checked);
}

TEST_F(Accessibility, switchCanBeMoved) {
    open();
    QAccessibleInterface* access = of(row("Multi-Center"));
    ASSERT_NE(access->actionInterface(), nullptr);
    access->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    settle();
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>"));
}

TEST_F(Accessibility, linkCanBePressed) {
    open();
    QAccessibleInterface* access = of(row("Advanced Options"));
    EXPECT_EQ(access->role(), QAccessible::Button);
    access->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(waitFor([this] { return title() == "Advanced Options"; }));
}

TEST_F(Accessibility, choiceTellsWhetherItIsMade) {
    open();
    openPage({"Advanced Options", "Album Artwork"});
    EXPECT_TRUE(of(row("After 1 second"))->state().checked);
    EXPECT_FALSE(of(row("After 3 seconds"))->state().checked);
}

TEST_F(Accessibility, profileRowTellsItsTexts) {
    open();
    openPage({"The Creators"});
    const QString name = of(lines().at(1))->text(QAccessible::Name);
    EXPECT_TRUE(name.contains("Daxon (@Daxon_QT)")) << name.toStdString();
}

TEST_F(Accessibility, greyedRowSaysSo) {
    open();
    openPage({"Advanced Options"});
    EXPECT_EQ(of(row("If AirDrop is Off"))->text(QAccessible::Description), "Dimmed");
    EXPECT_EQ(of(row("Always"))->text(QAccessible::Description), "");
}

TEST_F(Accessibility, tableIsAListAndHeadersAreHeadings) {
    open();
    EXPECT_EQ(of(seenTable())->role(), QAccessible::List);
    openPage({"Advanced Options", "Album Artwork"});
    QAccessibleInterface* header = of(lines().front());
    EXPECT_EQ(header->role(), QAccessible::Heading);
    EXPECT_EQ(header->text(QAccessible::Name), "Auto-Display");
}

}  // namespace desktop_tests
