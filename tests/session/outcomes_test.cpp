// SPDX-License-Identifier: MIT
#include "hosts/session/outcomes.h"

#include <gtest/gtest.h>

namespace {

using platform::Problem;

const Problem unread{"/settings", "cannot read", "input/output error", true};
const Problem unsaved{"/settings", "cannot write", "no space left"};

class Notices : public testing::Test {
protected:
    /// What the turn that ends now leaves to be told.
    std::string take() {
        const auto notice = outcomes.takeNotice();
        return notice ? notice->text : "(nothing)";
    }

    hosts::Outcomes outcomes{"test", false};
};

TEST_F(Notices, tellsApartWhatWasNotSavedAndWhatWasNotRead) {
    outcomes.notChanged(unsaved, true);
    EXPECT_EQ(take(), "Not saved: cannot write /settings: no space left");
    EXPECT_EQ(take(), "(nothing)");
    outcomes.notRead(unread);
    EXPECT_EQ(take(), "These are defaults: cannot read /settings: input/output error");
}

TEST_F(Notices, putAChangeFirst) {
    outcomes.notRead(unread);
    outcomes.notChanged(unsaved, true);
    const auto notice = outcomes.takeNotice();
    ASSERT_TRUE(notice);
    EXPECT_TRUE(notice->isUnsaved);
    EXPECT_EQ(notice->text, "Not saved: cannot write /settings: no space left");
    EXPECT_EQ(take(), "(nothing)");
}

// The row that goes back is read anew, and meets what the change has met.
TEST_F(Notices, areNotFollowedByTheSameFileThatCannotBeReadEither) {
    outcomes.notChanged(unsaved, true);
    take();
    outcomes.notRead(unread);
    EXPECT_EQ(take(), "(nothing)");
    outcomes.notRead({"/other", "cannot read", "input/output error", true});
    EXPECT_EQ(take(), "These are defaults: cannot read /other: input/output error");
}

TEST_F(Notices, comeAgainAfterATurnThatWentWell) {
    outcomes.notRead(unread);
    EXPECT_NE(take(), "(nothing)");
    EXPECT_EQ(take(), "(nothing)");
    outcomes.notRead(unread);
    EXPECT_NE(take(), "(nothing)");
}

TEST_F(Notices, haveRemarksAtTheirEnd) {
    testing::internal::CaptureStderr();
    outcomes.remark("/phone is empty");
    outcomes.notChanged(unsaved, true);
    EXPECT_EQ(take(), "Not saved: cannot write /settings: no space left; /phone is empty");
    outcomes.remark("/phone is empty");
    EXPECT_EQ(take(), "(nothing)");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "test: /phone is empty\n");
}

}  // namespace
