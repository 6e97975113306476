// SPDX-License-Identifier: MIT
#include "hosts/session/composed_post.h"

#include <gtest/gtest.h>

#include "tests/kit/test_platform.h"

namespace {

class Post : public testing::Test {
protected:
    Post() { write("At first"); }

    /// A post that the page has begun so.
    void write(std::string text) {
        auto composer =
            std::make_shared<platform::SLComposeViewController>(platform.services(), "SLServiceTypeTwitter");
        composer->setInitialText(std::move(text));
        post.emplace(std::move(composer), nowhere);
    }
    std::string roomFor(std::string text) {
        post->setText(std::move(text));
        return post->roomText();
    }

    kit::TestPlatform platform;
    hosts::NoHandOver nowhere;
    std::optional<hosts::ComposedPost> post;
};

TEST_F(Post, saysWhatIsLeftOfItsLengthInASentence) {
    EXPECT_EQ(roomFor(""), "140 characters left");
    EXPECT_EQ(roomFor(std::string(139, 'x')), "1 character left");
    EXPECT_EQ(roomFor(std::string(140, 'x')), "0 characters left");
    EXPECT_EQ(roomFor(std::string(141, 'x')), "1 character too many");
    EXPECT_EQ(roomFor(std::string(143, 'x')), "3 characters too many");
}

TEST_F(Post, countsInUnitsOfUtf16) {
    EXPECT_EQ(roomFor("\xC3\xA9"), "139 characters left");
    EXPECT_EQ(roomFor("\xF0\x9F\x9A\x8A"), "138 characters left");
}

TEST_F(Post, cannotBePostedWhileItIsBlankOrTooLong) {
    post->setText(std::string(140, 'x'));
    EXPECT_EQ(post->obstacle(), std::nullopt);
    post->setText(std::string(141, 'x'));
    EXPECT_EQ(post->obstacle(), "The post is too long: 1 character too many");
    const auto outcome = post->post();
    EXPECT_FALSE(outcome.isFinished);
    EXPECT_EQ(outcome.text, "The post is too long: 1 character too many");
    post->setText(" \n\t ");
    EXPECT_EQ(post->obstacle(), "There is nothing to post yet");
}

TEST_F(Post, isChangedOnceItsTextIsAnotherThanThePages) {
    EXPECT_FALSE(post->isChanged());
    post->setText("At last");
    EXPECT_TRUE(post->isChanged());
    post->setText("At first");
    EXPECT_FALSE(post->isChanged());
}

}  // namespace
