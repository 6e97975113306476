// SPDX-License-Identifier: MIT
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

TEST_F(ComposerInAWindow, failureIsToldAndReadAway) {
    openMail();
    handOver.program = handOver.draft = noRoom;
    clickButton("Save Draft");
    EXPECT_EQ(navigation().banners().text(), "The e-mail was not saved: there is no room");
    EXPECT_TRUE(navigation().isComposerShown()) << "for another try";
    clickButton("Send");
    EXPECT_EQ(navigation().banners().text(),
              "The e-mail was not sent (there is no room), and no draft was saved: there is no room");
    press(Qt::Key_Escape);
    EXPECT_TRUE(isGone()) << "the composer has kept the keyboard";
    clickButton("Close");
    EXPECT_EQ(navigation().banners().text(), "");
    press(Qt::Key_Down);
    EXPECT_TRUE(seenTable()->hasActiveFocus()) << "the pages have the keyboard again";
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

TEST_F(ComposerInAWindow, emptyPostCannotBePosted) {
    openPost();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    clickButton("Post");
    EXPECT_TRUE(navigation().isComposerShown());
    EXPECT_TRUE(handOver.posted.empty());
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
