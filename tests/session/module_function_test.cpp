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
using testing::StartsWith;

const std::string mailModule = std::string{TEST_MODULES} + "/libtrivel3mail.so";

std::string problemWith(const std::string& module, const char* function) {
    const auto found = loadFunction<WriteMailMessage>(module, function, "the mail module");
    return found ? "(none)" : found.error().text();
}

TEST(ModuleFunction, isFoundInItsModule) {
    const auto function = loadFunction<WriteMailMessage>(mailModule, hosts::writeMailMessageSymbol, "mail");
    ASSERT_TRUE(function);
    EXPECT_TRUE(*function);
    const auto again = loadFunction<WriteMailMessage>(mailModule, hosts::writeMailMessageSymbol, "mail");
    ASSERT_TRUE(again);
    EXPECT_EQ(*again, *function);
}

TEST(ModuleFunction, isMissingWithAReasonWhereThereIsNoModule) {
    EXPECT_THAT(problemWith("/no/such/module.so", "function"),
                StartsWith("cannot load the mail module: /no/such/module.so: "));
}

TEST(ModuleFunction, isMissingWithAReasonWhereTheModuleLacksIt) {
    EXPECT_THAT(problemWith(mailModule, "trivel3NoSuchFunction"), HasSubstr("trivel3NoSuchFunction"));
}

TEST(ModuleFunction, isMissingWithAReasonWhereTheFileIsNoModule) {
    const kit::TemporaryFolder folder;
    kit::writeText(folder / "module.so", "no module");
    EXPECT_THAT(problemWith(folder / "module.so", "function"), HasSubstr("module.so"));
}

}  // namespace
