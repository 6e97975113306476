// SPDX-License-Identifier: MIT
#include "hosts/session/composed_mail.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/ui/navigation_controller.h"
#include "tests/kit/changed_variable.h"
#include "tests/kit/test_platform.h"

namespace {

using hosts::ComposedMail;
using platform::MFMailComposeResult;
using platform::MFMailComposeViewController;
using platform::Problem;
using platform::Result;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Takes e-mails as it is told to.
struct PlannedHandOver final : hosts::HandOver {
    Result<hosts::DocumentsFolder> draftFolder() override { return folder; }
    hosts::MailHandOver sendMail(const MFMailComposeViewController&, const std::string& draftFolder) override {
        folders.push_back(draftFolder);
        return {program, draft};
    }
    Result<std::string> saveDraft(const MFMailComposeViewController&, const std::string& draftFolder) override {
        folders.push_back(draftFolder);
        return draft;
    }
    Result<platform::Done> post(std::string_view, std::string_view) override { return platform::Done(); }

    Result<hosts::DocumentsFolder> folder{hosts::DocumentsFolder{"/papers", true}};
    Result<std::string> program{std::string("Post Office")};
    Result<std::string> draft{std::string("/papers/Help.eml")};
    /// Where drafts were to go.
    std::vector<std::string> folders;
};

struct PresentedMails final : platform::NavigationHost {
    void didPush(platform::UIViewController&, bool) override {}
    void didPop(platform::UIViewController&, platform::UIViewController&, bool) override {}
    void didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool) override {
        mails.push_back(std::dynamic_pointer_cast<MFMailComposeViewController>(presented));
    }
    void didDismiss(bool) override { ++dismissed; }

    std::vector<std::shared_ptr<MFMailComposeViewController>> mails;
    int dismissed = 0;
};

/// A page that presents e-mails, and dismisses them when they are finished.
struct MailPage final : platform::UIViewController, platform::MFMailComposeViewControllerDelegate {
    using UIViewController::UIViewController;
    void mailComposeController_didFinishWithResult_error(MFMailComposeViewController&, MFMailComposeResult result,
                                                         const std::string& error) override {
        results.push_back(result);
        errors.push_back(error);
        dismissViewControllerAnimated_completion(true, nullptr);
    }

    std::vector<MFMailComposeResult> results;
    std::vector<std::string> errors;
};

class Mail : public testing::Test {
protected:
    Mail() {
        navigation.pushViewController_animated(page, false);
        auto composer = std::make_shared<MFMailComposeViewController>(platform.services());
        composer->setMailComposeDelegate(page);
        composer->setSubject("Help");
        composer->setToRecipients({"desk@example.org"});
        composer->addAttachmentData_mimeType_fileName("data", "text/plain", "Notes.txt");
        page->presentViewController_animated_completion(composer, true, nullptr);
    }

    ComposedMail last() { return {host.mails.back(), handOver}; }

    kit::TestPlatform platform;
    PlannedHandOver handOver;
    PresentedMails host;
    std::shared_ptr<MailPage> page = std::make_shared<MailPage>(platform.services().screen);
    platform::UINavigationController navigation{host};
};

const Problem noRoom{.reason = "there is no room"};

TEST_F(Mail, isSentOnceAProgramHasIt) {
    const auto outcome = last().handOver(ComposedMail::Way::send);
    EXPECT_THAT(page->results, ElementsAre(MFMailComposeResult::sent));
    EXPECT_THAT(handOver.folders, ElementsAre("/papers"));
    EXPECT_FALSE(outcome.beginAgain);
}

TEST_F(Mail, isSavedWhereNoProgramTakesItAndCanBeTriedAgain) {
    handOver.program = noRoom;
    const auto outcome = last().handOver(ComposedMail::Way::send);
    EXPECT_THAT(page->results, ElementsAre(MFMailComposeResult::saved));
    EXPECT_EQ(outcome.text, "Not sent (there is no room); draft: /papers/Help.eml");
    EXPECT_TRUE(outcome.beginAgain);
}

TEST_F(Mail, hasFailedWhenItIsNeitherSentNorSaved) {
    handOver.program = handOver.draft = noRoom;
    for (const auto way : {ComposedMail::Way::send, ComposedMail::Way::saveDraft}) {
        const auto outcome = last().handOver(way);
        EXPECT_TRUE(outcome.isFinished);
        EXPECT_EQ(page->results.back(), MFMailComposeResult::failed);
        EXPECT_EQ(page->errors.back(), outcome.text);
        EXPECT_THAT(outcome.text, HasSubstr("there is no room"));
        ASSERT_TRUE(outcome.beginAgain);
        outcome.beginAgain();
    }
    EXPECT_EQ(host.dismissed, 2);
}

TEST_F(Mail, hasFailedWhereNobodyKnowsAPlaceForItsDraft) {
    handOver.folder = noRoom;
    EXPECT_EQ(last().folderToAskFor(), std::nullopt);
    EXPECT_EQ(last().handOver(ComposedMail::Way::send).text, "The e-mail was neither sent nor saved: there is no room");
    EXPECT_THAT(page->results, ElementsAre(MFMailComposeResult::failed));
}

TEST_F(Mail, beginsAgainWithTheSameContentForTheSamePage) {
    handOver.program = handOver.draft = noRoom;
    const auto beginAgain = last().handOver(ComposedMail::Way::send).beginAgain;
    ASSERT_TRUE(beginAgain);
    EXPECT_THAT(navigation.presented(), IsEmpty());
    beginAgain();
    ASSERT_THAT(host.mails, SizeIs(2));
    EXPECT_NE(host.mails[1], host.mails[0]);
    EXPECT_EQ(host.mails[1]->subject(), "Help");
    EXPECT_THAT(host.mails[1]->toRecipients(), ElementsAre("desk@example.org"));
    ASSERT_THAT(host.mails[1]->attachments(), SizeIs(1));
    EXPECT_EQ(host.mails[1]->attachments()[0].data, "data");
    EXPECT_EQ(host.mails[1]->attachments()[0].fileName, "Notes.txt");
    last().cancel();
    EXPECT_EQ(page->results.back(), MFMailComposeResult::cancelled);
    EXPECT_THAT(navigation.presented(), IsEmpty());
}

TEST_F(Mail, asksWhereItsDraftIsToGoOnlyWhereThatFolderIsMissing) {
    EXPECT_EQ(last().folderToAskFor(), std::nullopt);
    handOver.folder = hosts::DocumentsFolder{"/papers", false};
    EXPECT_EQ(last().folderToAskFor(), "/papers");
    last().handOver(ComposedMail::Way::saveDraft, "/elsewhere");
    EXPECT_THAT(handOver.folders, ElementsAre("/elsewhere"));
}

TEST_F(Mail, takesAFolderFromTheRootOrFromTheHomeFolder) {
    const kit::ChangedVariable home("HOME", "/home/user");
    EXPECT_EQ(*ComposedMail::folderNamed(" /tmp/my papers \n"), "/tmp/my papers");
    EXPECT_EQ(*ComposedMail::folderNamed("~/Papers"), "/home/user/Papers");
    EXPECT_EQ(*ComposedMail::folderNamed("~"), "/home/user");
    for (const char* wrong : {"", "  ", "papers", "./papers", "~other/papers"})
        EXPECT_FALSE(ComposedMail::folderNamed(wrong)) << wrong;
}

}  // namespace
