// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "hosts/session/services.h"
#include "tests/kit/phone.h"

namespace {

using hosts::ScratchFileSystem;
using kit::replaceFile;
using kit::settingsPath;

struct Layers : testing::Test {
    kit::Phone phone;
    hosts::PhoneFileSystem files = kit::openPhone(phone.folder);
    ScratchFileSystem lower{files};
    ScratchFileSystem upper{static_cast<const platform::FileSystem&>(lower)};
};

// Who has parsed the one would take the other for it.
TEST_F(Layers, haveStampsOfTheirOwn) {
    EXPECT_EQ(replaceFile(lower, settingsPath, "one"), "");
    const auto below = upper.look(settingsPath);
    EXPECT_EQ(replaceFile(upper, settingsPath, "two"), "");
    const auto above = upper.look(settingsPath);
    ASSERT_TRUE(below && above);
    EXPECT_FALSE(below->isSameAs(*above));
}

TEST_F(Layers, showWhatIsBelowOnceTheirChangesAreForgotten) {
    kit::writeSettings(phone, "stored");
    EXPECT_EQ(replaceFile(lower, settingsPath, "tried"), "");
    std::string contents;
    EXPECT_TRUE(lower.readFile(settingsPath, contents));
    EXPECT_EQ(contents, "tried");
    lower.forgetChanges();
    EXPECT_TRUE(lower.readFile(settingsPath, contents));
    EXPECT_EQ(contents, "stored");
}

}  // namespace
