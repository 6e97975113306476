// SPDX-License-Identifier: MIT
#include "hosts/system/state_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/kit/changed_variable.h"

namespace {

std::string folderWith(const char* state, const char* home) {
    const kit::ChangedVariable stateHome{"XDG_STATE_HOME", state};
    const kit::ChangedVariable homeFolder{"HOME", home};
    const auto folder = hosts::stateFolder();
    return folder ? *folder : "(none) " + folder.error().text();
}

TEST(StateFolder, isTheOneThatTheUserNames) {
    EXPECT_EQ(folderWith("/state", "/home/me"), "/state/trivel3");
    EXPECT_EQ(folderWith("/state", nullptr), "/state/trivel3");
}

TEST(StateFolder, liesInTheHomeFolderWhenTheUserNamesNone) {
    for (const char* state : {static_cast<const char*>(nullptr), "", "state", "./state"}) {
        EXPECT_EQ(folderWith(state, "/home/me"), "/home/me/.local/state/trivel3");
    }
}

TEST(StateFolder, isNotGuessed) {
    for (const char* home : {static_cast<const char*>(nullptr), "", "home"}) {
        EXPECT_THAT(folderWith("state", home), testing::HasSubstr("neither XDG_STATE_HOME nor HOME is an absolute"));
    }
}

}  // namespace
