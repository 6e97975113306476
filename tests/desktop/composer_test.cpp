// SPDX-License-Identifier: MIT
#include <QTest>

#include "tests/desktop/desk.h"

namespace desktop_tests {

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
}

TEST_F(ComposerInAWindow, mailSavedAsDraftIsHandedOver) {
    openMail();
    clickButton("Save Draft");
    EXPECT_TRUE(isGone());
    EXPECT_EQ(handOver.saved, std::vector<std::string>{"Trivel Support Trivel.plist"});
}

TEST_F(ComposerInAWindow, failureIsToldAndReadAway) {
    openMail();
    handOver.outcome = {false, "There is no room."};
    clickButton("Send");
    EXPECT_TRUE(isGone());
    EXPECT_EQ(navigation().message(), "There is no room.");
    settle();
    press(Qt::Key_Return);
    EXPECT_EQ(navigation().message(), "");
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
