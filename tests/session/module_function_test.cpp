// SPDX-License-Identifier: MIT
#include "hosts/system/module_function.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/hand_over/message_writer.h"
#include "tests/kit/temporary_folder.h"

namespace {

using hosts::loadFunction;
using hosts::WriteMailMessage;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::string mailModule = std::string{TEST_MODULES} + "/libtrivel3mail.so";

TEST(ModuleFunction, isFoundInItsModule) {
    std::string error;
    auto* const function = loadFunction<WriteMailMessage>(mailModule, hosts::writeMailMessageSymbol, "mail", error);
    EXPECT_TRUE(function);
    EXPECT_THAT(error, IsEmpty());
    EXPECT_EQ(loadFunction<WriteMailMessage>(mailModule, hosts::writeMailMessageSymbol, "mail", error), function);
}

TEST(ModuleFunction, isMissingWithAReasonWhereThereIsNoModule) {
    std::string error;
    EXPECT_FALSE(loadFunction<WriteMailMessage>("/no/such/module.so", "function", "the mail module", error));
    EXPECT_THAT(error, StartsWith("cannot load the mail module: /no/such/module.so: "));
}

TEST(ModuleFunction, isMissingWithAReasonWhereTheModuleLacksIt) {
    std::string error;
    EXPECT_FALSE(loadFunction<WriteMailMessage>(mailModule, "trivel3NoSuchFunction", "the mail module", error));
    EXPECT_THAT(error, HasSubstr("trivel3NoSuchFunction"));
}

TEST(ModuleFunction, isMissingWithAReasonWhereTheFileIsNoModule) {
    const test::TemporaryFolder folder;
    test::writeText(folder / "module.so", "no module");
    std::string error;
    EXPECT_FALSE(loadFunction<WriteMailMessage>(folder / "module.so", "function", "the mail module", error));
    EXPECT_THAT(error, HasSubstr("module.so"));
}

}  // namespace
