// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>

#include "tests/desktop/desk.h"

namespace desktop_tests {

/// A window that knows of some phones, and notes which ones it is to open.
class PhonesOfWindow : public Desk {
protected:
    void openWithPhones() {
        open();
        navigation().phones().use({"/phones/Ada", "Ada's Phone"},
                                  {.openPhone =
                                       [this](const QString& wanted) {
                                           opened.append(wanted);
                                           return problem;
                                       },
                                   .chooseFolder = [this] { ++choosings; },
                                   .known =
                                       [] {
                                           return std::vector<hosts::desktop::KnownPhone>{
                                               {"/phones/Ada", "Ada's Phone"}, {"/phones/Bob", "Bob's Phone"}};
                                       }});
        settle();
    }
    hosts::desktop::Phones& phones() { return navigation().phones(); }
    void drop(const QList<QUrl>& addresses) {
        QMimeData data;
        data.setUrls(addresses);
        const QPoint place = view().contentItem()->boundingRect().center().toPoint();
        QDragEnterEvent entered(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view(), &entered);
        EXPECT_TRUE(entered.isAccepted());
        QDropEvent dropped(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view(), &dropped);
        settle();
    }

    QStringList opened;
    QString problem;
    int choosings = 0;
};

TEST_F(PhonesOfWindow, areNamedByTheTitleAndTheBar) {
    openWithPhones();
    EXPECT_EQ(view().title(), "phone – Trivel 3") << "the folder's name, where the phone tells none";
    QQuickItem* const inBar = named(view().rootObject(), "Phone: Ada's Phone");
    ASSERT_NE(inBar, nullptr);
    click(inBar);
    EXPECT_TRUE(phones().isOpen());
}

TEST_F(PhonesOfWindow, areOpenedFromTheirPage) {
    openWithPhones();
    phones().begin();
    settle();
    ASSERT_NE(
        named(view().rootObject(), "Open Folder…, The root of a phone's file system, or a folder that looks like one"),
        nullptr);
    EXPECT_EQ(view().activeFocusItem()->property("text").toString(), "Open Folder…");
    click(named(view().rootObject(), "Bob's Phone, /phones/Bob"));
    EXPECT_EQ(opened, QStringList("/phones/Bob"));
    EXPECT_FALSE(phones().isOpen());
    // The keyboard comes by the sample phone, and by this one, which is there already.
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(choosings, 1);
    session->window().showFocus();
    phones().begin();
    settle();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(opened, QStringList({"/phones/Bob", ""}));
    phones().begin();
    settle();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(opened.size(), 2);
    EXPECT_FALSE(phones().isOpen());
    EXPECT_TRUE(seenTable()->hasActiveFocus());
}

TEST_F(PhonesOfWindow, areToldOfWhenTheyCannotBeOpened) {
    openWithPhones();
    problem = "/phones/Bob: no such folder";
    phones().begin();
    settle();
    click(named(view().rootObject(), "Bob's Phone, /phones/Bob"));
    EXPECT_TRUE(phones().isOpen());
    EXPECT_NE(named(view().rootObject(), problem), nullptr);
    press(Qt::Key_Escape);
    EXPECT_FALSE(phones().isOpen());
}

TEST_F(PhonesOfWindow, areAskedForByTheirNameWhereNothingCanChooseThem) {
    openWithPhones();
    phones().askForName();
    settle();
    problem = "/x: no such folder";
    for (const char letter : std::string("/x"))
        QTest::keyClick(&view(), letter);
    press(Qt::Key_Return);
    EXPECT_EQ(opened, QStringList("/x"));
    EXPECT_NE(named(view().rootObject(), problem), nullptr);
    EXPECT_TRUE(phones().isAsking());
    problem.clear();
    press(Qt::Key_Return);
    EXPECT_FALSE(phones().isOpen());
    EXPECT_TRUE(seenTable()->hasActiveFocus());
}

TEST_F(PhonesOfWindow, areOpenedByTheAddressThatIsTyped) {
    openWithPhones();
    phones().begin();
    settle();
    click(named(view().rootObject(), "Enter Address…, Of a phone that is reached by SSH, or the path of a folder"));
    settle();
    EXPECT_TRUE(phones().isAsking());
    for (const char letter : std::string(" ssh://mobile@phone.local:2222/var"))
        QTest::keyClick(&view(), letter);
    press(Qt::Key_Return);
    EXPECT_EQ(opened, QStringList("ssh://mobile@phone.local:2222/var"));
    phones().openNamed("https://phone.local/");
    EXPECT_EQ(opened.size(), 1);
    EXPECT_TRUE(phones().isOpen());
}

TEST_F(PhonesOfWindow, areOpenedWhereTheirFoldersAreDropped) {
    openWithPhones();
    drop({QUrl::fromLocalFile("/phones/With a Space"), QUrl::fromLocalFile("/phones/100%")});
    EXPECT_EQ(opened, QStringList({"/phones/With a Space", "/phones/100%"}));
    drop({QUrl("sftp://elsewhere/phone")});
    EXPECT_EQ(opened.size(), 2);
    EXPECT_TRUE(phones().problem().contains("sftp://elsewhere/phone")) << phones().problem().toStdString();
}

}  // namespace desktop_tests
