// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QTest>

#include "tests/desktop/desk.h"

namespace desktop_tests {

const platform::Problem noRoom{.reason = "there is no room"};

class ComposerInAWindow : public Desk {
protected:
    void openMail() {
        open();
        table().tap(lineOf("Fenwary Support"));
        ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
        settle();
    }
    void openPost() {
        open();
        click(named(view().rootObject(), "Heart"));
        ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
        settle();
    }
    bool isGone() {
        return waitFor([this] { return !navigation().composer(); });
    }
    void clickButton(const QString& name) { click(named(view().rootObject(), name)); }

    QString focusedName() {
        QAccessibleInterface* access = QAccessible::queryAccessibleInterface(view().activeFocusItem());
        return access ? access->text(QAccessible::Name) : QString();
    }

    /// Tab comes to these one after the other, and Shift+Tab back.
    void expectRound(const QStringList& names) {
        for (const QString& name : names) {
            press(Qt::Key_Tab);
            EXPECT_EQ(focusedName(), name);
        }
        for (auto i = names.size() - 1; i-- > 0;) {
            press(Qt::Key_Backtab, Qt::ShiftModifier);
            EXPECT_EQ(focusedName(), names[i]);
        }
    }

    /// What a screen reader reads out where there is no control.
    QQuickItem* spoken(const QString& text, QQuickItem* within = nullptr) {
        if (!within) within = view().rootObject();
        QAccessibleInterface* access = QAccessible::queryAccessibleInterface(within);
        if (access && access->role() == QAccessible::StaticText && access->text(QAccessible::Name) == text)
            return within;
        for (QQuickItem* child : within->childItems()) {
            if (QQuickItem* found = spoken(text, child)) return found;
        }
        return nullptr;
    }

    void expectPostIsOff() {
        EXPECT_FALSE(named(view().rootObject(), "Post")->isEnabled());
        clickButton("Post");
        press(Qt::Key_Return, Qt::ControlModifier);
        EXPECT_TRUE(navigation().isComposerShown());
        EXPECT_TRUE(handOver.posted.empty());
    }
};

TEST_F(ComposerInAWindow, mailShowsWhatThePageHasPutIn) {
    openMail();
    const auto& mail = *navigation().composer();
    EXPECT_EQ(mail.kind(), "mail");
    EXPECT_EQ(mail.subject(), "Trivel Support");
    ASSERT_EQ(mail.attachments().size(), 1);
    EXPECT_EQ(mail.attachments().first().toMap().value("name"), "Trivel.plist");
    EXPECT_FALSE(mail.attachments().first().toMap().value("missing").toBool());
}

TEST_F(ComposerInAWindow, mailCancelledGoesNowhere) {
    openMail();
    clickButton("Cancel");
    EXPECT_TRUE(isGone());
    EXPECT_TRUE(handOver.sent.empty());
    EXPECT_TRUE(handOver.saved.empty());
}

TEST_F(ComposerInAWindow, mailSentIsHandedOverOnce) {
    openMail();
    clickButton("Send");
    EXPECT_TRUE(isGone());
    EXPECT_EQ(handOver.sent, std::vector<std::string>{"Trivel Support Trivel.plist"});
    EXPECT_EQ(navigation().banners().text(), "") << "the program that has it is before the user's eyes";
}

TEST_F(ComposerInAWindow, mailSavedAsDraftIsHandedOver) {
    openMail();
    clickButton("Save Draft");
    EXPECT_TRUE(isGone());
    EXPECT_EQ(handOver.saved, std::vector<std::string>{"Trivel Support Trivel.plist"});
    EXPECT_EQ(navigation().banners().text(), "Draft: /home/user/Trivel Support.eml");
}

TEST_F(ComposerInAWindow, draftThatCouldNotBeSavedIsToldEvenWhereAProgramTookTheMail) {
    openMail();
    handOver.draft = noRoom;
    clickButton("Send");
    EXPECT_TRUE(isGone());
    EXPECT_EQ(navigation().banners().text(),
              "The e-mail is open in Post Office, but no draft was saved: there is no room");
}

TEST_F(ComposerInAWindow, mailThatIsADraftAloneIsTold) {
    openMail();
    handOver.program = noRoom;
    clickButton("Send");
    EXPECT_TRUE(isGone());
    EXPECT_EQ(navigation().banners().text(), "Not sent (there is no room); draft: /home/user/Trivel Support.eml");
}

TEST_F(ComposerInAWindow, mailIsNotTouchedByTheKeyThatHasOpenedIt) {
    openMail();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        press(key);
    EXPECT_TRUE(navigation().isComposerShown());
    EXPECT_TRUE(handOver.sent.empty());
    EXPECT_TRUE(handOver.saved.empty());
}

TEST_F(ComposerInAWindow, mailHasAllItsButtonsInTheRoundOfTheTabKey) {
    openMail();
    expectRound({"Save Draft", "Cancel", "Send", "E-mail to support@fenwary.example"});
}

TEST_F(ComposerInAWindow, mailThatIsNeitherSentNorSavedEndsAndCanBeBegunAgain) {
    openMail();
    handOver.program = handOver.draft = noRoom;
    clickButton("Save Draft");
    EXPECT_EQ(navigation().banners().text(), "The e-mail was not saved: there is no room");
    ASSERT_TRUE(isGone()) << "its page has dismissed it";
    clickButton("Begin Again");
    ASSERT_TRUE(navigation().isComposerShown());
    EXPECT_FALSE(navigation().banners().isShown());
    clickButton("Send");
    EXPECT_EQ(navigation().banners().text(),
              "The e-mail was not sent (there is no room), and no draft was saved: there is no room");
    ASSERT_TRUE(isGone());
    clickButton("Begin Again");
    handOver.program = std::string("Post Office");
    handOver.draft = std::string("/home/user/Trivel Support.eml");
    clickButton("Send");
    ASSERT_TRUE(isGone());
    EXPECT_FALSE(navigation().banners().isShown());
    EXPECT_EQ(handOver.sent, (std::vector<std::string>(2, "Trivel Support Trivel.plist"))) << "with the same content";
    press(Qt::Key_Down);
    EXPECT_TRUE(seenTable()->hasActiveFocus()) << "the pages have the keyboard again";
}

TEST_F(ComposerInAWindow, mailBegunAgainWhileTheFirstStillLeavesHasTheKeyboard) {
    open(false);
    table().tap(lineOf("Fenwary Support"));
    ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
    handOver.program = noRoom;
    navigation().composer()->send();
    ASSERT_FALSE(navigation().isComposerShown());
    navigation().banners().act();
    ASSERT_TRUE(waitFor([this] { return named(view().rootObject(), "Save Draft") != nullptr; }));
    settle();
    press(Qt::Key_Escape);
    EXPECT_TRUE(isGone());
}

TEST_F(ComposerInAWindow, mailAsksWhereItsDraftIsToGoWhereThereIsNoFolder) {
    handOver.folder = {"/home/user/Documents", false};
    openMail();
    clickButton("Save Draft");
    EXPECT_TRUE(handOver.saved.empty());
    ASSERT_NE(named(view().rootObject(), "Continue"), nullptr);
    for (char each : std::string("/mine"))
        QTest::keyClick(&view(), each);
    press(Qt::Key_Return);
    EXPECT_TRUE(isGone());
    EXPECT_EQ(handOver.saved.size(), 1u);
    EXPECT_EQ(handOver.asked, "/home/user/Documents/mine");
}

TEST_F(ComposerInAWindow, mailTakesNoFolderOfWhichItIsNotToldWhereItIs) {
    handOver.folder = {"/home/user/Documents", false};
    openMail();
    clickButton("Send");
    press(Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&view(), 'x');
    clickButton("Continue");
    EXPECT_TRUE(handOver.sent.empty());
    EXPECT_NE(named(view().rootObject(), "A folder's path begins with / or ~/"), nullptr);
    press(Qt::Key_Escape);
    EXPECT_EQ(named(view().rootObject(), "Continue"), nullptr);
    EXPECT_TRUE(navigation().isComposerShown()) << "the key was for the question alone";
    press(Qt::Key_Escape);
    EXPECT_TRUE(isGone());
    EXPECT_TRUE(handOver.sent.empty());
}

TEST_F(ComposerInAWindow, postIsHandedOverAsTheUserLeftIt) {
    openPost();
    EXPECT_EQ(navigation().composer()->text(), "I'm loving #Trivel3 from @Fenwary!");
    for (char each : std::string(" Really."))
        QTest::keyClick(&view(), each);
    clickButton("Post");
    EXPECT_TRUE(isGone());
    EXPECT_EQ(handOver.posted, std::vector<std::string>{"I'm loving #Trivel3 from @Fenwary! Really."});
}

TEST_F(ComposerInAWindow, postThatFoundNoWayOutStaysWithItsText) {
    openPost();
    for (char each : std::string(" Really."))
        QTest::keyClick(&view(), each);
    handOver.opened = platform::Problem{"https://example.org/post", {}, "there is no browser"};
    clickButton("Post");
    settle();
    EXPECT_EQ(navigation().banners().text(), "Not opened: there is no browser https://example.org/post");
    clickButton("Close");
    EXPECT_EQ(navigation().banners().text(), "");
    ASSERT_TRUE(navigation().isComposerShown());
    handOver.opened = platform::Done();
    QTest::keyClick(&view(), '!');
    clickButton("Post");
    EXPECT_TRUE(isGone());
    const std::string text = "I'm loving #Trivel3 from @Fenwary! Really.";
    EXPECT_EQ(handOver.posted, (std::vector<std::string>{text, text + "!"}));
    EXPECT_EQ(navigation().banners().text(), "");
}

TEST_F(ComposerInAWindow, escapeCancelsAPost) {
    openPost();
    press(Qt::Key_Escape);
    EXPECT_TRUE(isGone());
    EXPECT_TRUE(handOver.posted.empty());
    EXPECT_EQ(title(), "Trivel 3");
}

TEST_F(ComposerInAWindow, postThatWasChangedIsKeptUntilTheUserAgreesThatItGoes) {
    openPost();
    QTest::keyClick(&view(), '!');
    const auto ask = [this] { press(Qt::Key_Escape); };
    const auto close = [this] { view().close(); };
    const auto cancel = [this] { clickButton("Cancel"); };
    for (const std::function<void()>& leave : {std::function<void()>(ask), {close}, {cancel}}) {
        leave();
        settle();
        ASSERT_NE(named(view().rootObject(), "Discard"), nullptr);
        EXPECT_TRUE(view().isVisible());
        press(Qt::Key_Return);
        EXPECT_EQ(named(view().rootObject(), "Discard"), nullptr);
        ASSERT_TRUE(navigation().isComposerShown());
        QTest::keyClick(&view(), '!');
    }
    EXPECT_EQ(navigation().composer()->text(), "I'm loving #Trivel3 from @Fenwary!!!!!")
        << "the text has the keys again";
    press(Qt::Key_Escape);
    clickButton("Discard");
    EXPECT_TRUE(isGone());
    EXPECT_TRUE(view().isVisible());
}

TEST_F(ComposerInAWindow, postThatWasChangedGoesWithTheWindowOnceTheUserHasAgreed) {
    openPost();
    QTest::keyClick(&view(), '!');
    view().close();
    ASSERT_TRUE(view().isVisible());
    clickButton("Discard");
    EXPECT_TRUE(waitFor([this] { return !view().isVisible(); }));
    EXPECT_TRUE(handOver.posted.empty());
}

TEST_F(ComposerInAWindow, postThatIsThePagesGoesWithTheWindowAtOnce) {
    openPost();
    QTest::keyClick(&view(), '!');
    press(Qt::Key_Backspace);
    view().close();
    EXPECT_TRUE(waitFor([this] { return !view().isVisible(); }));
}

TEST_F(ComposerInAWindow, postHasAllItsButtonsInTheRoundOfTheTabKey) {
    openPost();
    expectRound({"Cancel", "Post", "Text of the post"});
    EXPECT_EQ(navigation().composer()->text(), "I'm loving #Trivel3 from @Fenwary!") << "no tab is in it";
}

TEST_F(ComposerInAWindow, postCannotBePostedWhileItIsEmpty) {
    openPost();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    expectPostIsOff();
}

TEST_F(ComposerInAWindow, postCannotBePostedWhileItIsTooLong) {
    openPost();
    const QString left = "106 characters left";
    EXPECT_NE(spoken(left), nullptr);
    for (int i = 0; i < 105; ++i)
        QTest::keyClick(&view(), 'x');
    settle();
    EXPECT_NE(spoken("1 character left"), nullptr);
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(&view(), 'x');
    settle();
    EXPECT_NE(spoken("3 characters too many"), nullptr);
    expectPostIsOff();
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Backspace);
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(isGone());
    EXPECT_EQ(handOver.posted.size(), 1u);
}

TEST_F(ComposerInAWindow, pagesBelowDoNotAnswer) {
    open();
    const QPointF place = row("Hot Corners")->mapToScene({280, 22});
    click(named(view().rootObject(), "Heart"));
    QTest::mouseClick(&view(), Qt::LeftButton, {}, place.toPoint());
    settle();
    EXPECT_EQ(settings(), "");
    press(Qt::Key_Escape);
    ASSERT_TRUE(isGone());
    QTest::mouseClick(&view(), Qt::LeftButton, {}, place.toPoint());
    settle();
    EXPECT_TRUE(settingIs("HotCorners", "<false/>")) << "the click was at the switch";
}

TEST_F(ComposerInAWindow, animatedOneIsSeenToLeave) {
    open(false);
    click(named(view().rootObject(), "Heart"));
    ASSERT_TRUE(waitFor([this] { return navigation().isComposerShown(); }));
    QTest::qWait(400);
    navigation().composer()->cancel();
    settle();
    EXPECT_NE(navigation().composer(), nullptr) << "it is on its way out";
    EXPECT_TRUE(isGone());
}

}  // namespace desktop_tests
