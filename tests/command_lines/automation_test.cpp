// SPDX-License-Identifier: MIT
// The examples of docs/automation.md, run as they stand by a user who has just installed the programs.
#include <filesystem>

#include "programs.h"
#include "tests/kit/expectations.h"
#include "tests/kit/private_bus.h"

namespace command_lines_test {
namespace {

using kit::linesOf;
using kit::Outcome;
using testing::HasSubstr;
using Words = Programs::Words;

// The blocks of the document in this language, each with its lines.
std::vector<Words> blocksIn(const std::string& language) {
    std::vector<Words> blocks;
    bool isInside = false;
    for (const std::string& line : linesOf(kit::readText(TEST_AUTOMATION))) {
        if (line == "```" + language)
            blocks.emplace_back();
        else if (isInside && line != "```")
            blocks.back().push_back(line);
        isInside = line != "```" && (isInside || line == "```" + language);
    }
    return blocks;
}

std::string scriptOf(const Words& lines) {
    std::string script;
    for (const std::string& line : lines)
        script += line + "\n";
    return script;
}

class Automation : public testing::Test {
protected:
    Automation() { programs.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address(); }

    Outcome run(const std::string& script) const { return programs.run({"sh", "-e", "-c", "cd\n" + script}); }

    const kit::PrivateBus bus;
    Programs programs;
};

TEST_F(Automation, commandsPrintWhatTheDocumentTells) {
    const auto blocks = blocksIn("console");
    ASSERT_FALSE(blocks.empty());
    for (const Words& block : blocks) {
        std::string script;
        std::string told;
        for (const std::string& line : block)
            (line.starts_with("$ ") ? script += line.substr(2) + "\n" : told += line + "\n");
        SCOPED_TRACE(script);
        const Outcome outcome = run(script);
        kit::expectDone(outcome);
        EXPECT_EQ(outcome.output, told);
    }
}

// In their order, since one shows what another has done.
TEST_F(Automation, examplesWork) {
    if (!std::filesystem::exists(TEST_JQ)) GTEST_SKIP() << "there is no jq on this machine";
    for (const Words& block : blocksIn("sh")) {
        const std::string script = scriptOf(block);
        SCOPED_TRACE(script);
        const Outcome outcome = run(script);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_NE(outcome.output, "");
    }
}

TEST_F(Automation, reportCanBeReadOfAPhoneThatTellsNothingOfItself) {
    if (!std::filesystem::exists(TEST_JQ)) GTEST_SKIP() << "there is no jq on this machine";
    const std::string phone = programs.folder / "phone";
    std::filesystem::create_directories(phone + "/var");
    programs.environment["TRIVEL3_PHONE"] = phone;
    const Outcome outcome = run(scriptOf(blocksIn("sh").back()));
    kit::expectDone(outcome);
    EXPECT_THAT(outcome.output, HasSubstr(R"("ProductType":null)"));
}

}  // namespace
}  // namespace command_lines_test
