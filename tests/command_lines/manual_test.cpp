// SPDX-License-Identifier: MIT
#include <cctype>
#include <filesystem>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "programs.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/private_bus.h"

namespace command_lines_test {
namespace {

namespace fs = std::filesystem;
using kit::linesOf;
using kit::Outcome;
using testing::HasSubstr;
using testing::IsEmpty;
using Words = Programs::Words;
using Names = std::set<std::string>;

// A page's lines, by the titles of its sections.
using Page = std::map<std::string, Words>;

Page readPage(const fs::path& file) {
    Page page;
    std::string section;
    for (const std::string& line : linesOf(kit::readText(file))) {
        if (line.starts_with(".Sh "))
            section = line.substr(4);
        else
            page[section].push_back(line);
    }
    return page;
}

// Those of the programs that are built.
std::map<std::string, Page> commandPages() {
    std::map<std::string, Page> pages;
    for (const auto& file : fs::directory_iterator(TEST_MANUAL "/man1")) {
        const std::string name = file.path().stem();
        if (TEST_HAS_WINDOW || name != "trivel3-settings") pages[name] = readPage(file);
    }
    return pages;
}

std::vector<fs::path> everyPage() {
    std::vector<fs::path> files;
    for (const auto& file : fs::recursive_directory_iterator(TEST_MANUAL))
        if (file.is_regular_file()) files.push_back(file.path());
    return files;
}

Words wordsIn(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

// The names that a macro line gives to an option or a positional argument: "--output" and "-o", or "FILE".
Names argumentNames(const std::string& line) {
    Names names;
    bool isFlag = false;
    for (const std::string& word : wordsIn(line)) {
        if (word == "Fl" || word == ".Fl") {
            isFlag = true;
        } else if (word == "Ar" || word == ".Ar") {
            if (!names.empty()) return names;
            isFlag = false;
        } else if (word != "," && word != "|" && word != "..." && !word.starts_with('.') && word != "Op" &&
                   word != "It") {
            names.insert(isFlag ? "-" + word : word);
        }
    }
    return names;
}

struct Argument {
    std::string value;  // what an option takes
    Names choices;
    bool operator==(const Argument&) const = default;
};

// What the section OPTIONS tells, by all names of the argument.
std::map<Names, Argument> documentedArguments(const Page& page) {
    std::map<Names, Argument> arguments;
    Argument* item = nullptr;
    for (const std::string& line : page.at("OPTIONS")) {
        if (line.starts_with(".It ")) {
            item = &arguments[argumentNames(line)];
            const std::size_t value = line.find(" Ar ");
            if (line.starts_with(".It Fl ") && value != std::string::npos) item->value = line.substr(value + 4);
        } else if (item && line.starts_with(".Cm ")) {
            item->choices.insert(wordsIn(line).at(1));
        }
    }
    return arguments;
}

// The command lines that the section SYNOPSIS begins: "trivel3ctl plist lint".
Names documentedCommands(const std::string& name, const Page& page) {
    Names commands;
    for (const std::string& line : page.at("SYNOPSIS"))
        if (line.starts_with(".Nm")) commands.insert(line == ".Nm" ? name : line.substr(4));
    return commands;
}

// The program's own table, as it tells it to shells. The phone that is named is not there: no word comes from one.
class Table {
public:
    Table() { _programs.environment["TRIVEL3_PHONE"] = _programs.folder / "missing"; }

    Names subcommands(const std::string& command) const { return choices(command, {""}); }

    std::map<std::string, std::string> offered(const std::string& command, const Words& more) const {
        Words words = wordsIn(command);
        words.insert(words.end(), more.begin(), more.end());
        return _programs.offered(words);
    }

    std::string help(const std::string& command) const {
        Words words = wordsIn(command);
        words.push_back("--help");
        return _programs.run(words).output;
    }

    // Adds what the command takes, but for the options of the program where it is a subcommand.
    void addArguments(const std::string& command, std::map<std::string, Names>& arguments) const {
        auto options = offered(command, {"-"});
        if (command.find(' ') != std::string::npos)
            for (const auto& [option, description] : offered(wordsIn(command).front(), {"-"}))
                options.erase(option);
        for (const auto& [option, description] : options) {
            // After a flag stands what stands without it.
            const bool takesWord = offered(command, {option, ""}) != offered(command, {""});
            arguments[option] = takesWord ? choices(command, {option, ""}) : Names();
        }
        Words before;
        for (const std::string& name : positionals(command)) {
            before.push_back("");
            arguments[name] = choices(command, before);
            before.back() = "x";
        }
    }

private:
    Words positionals(const std::string& command) const {
        std::smatch usage;
        const std::string text = help(command);
        if (!std::regex_search(text, usage, std::regex("Usage: [a-z0-9 -]+\\[OPTIONS\\]([^\n]*)"))) return {};
        Words names;
        for (const std::string& word : wordsIn(std::regex_replace(usage.str(1), std::regex("[\\[\\].]"), "")))
            if (word != "SUBCOMMAND" && word != "SUBCOMMANDS") names.push_back(word);
        return names;
    }

    Names choices(const std::string& command, const Words& more) const {
        const auto words = offered(command, more);
        if (words.contains("files") || words.contains("folders")) return {};
        Names names;
        for (const auto& [word, description] : words)
            if (!word.starts_with('-')) names.insert(word);
        return names;
    }

    Programs _programs;
};

std::string joined(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += name + " ";
    return text;
}

TEST(Manual, hasAPageForEachSubcommandAndNoOther) {
    const Table table;
    Names expected = {"trivel3ctl"};
    if (TEST_HAS_WINDOW) expected.insert("trivel3-settings");
    for (const std::string& subcommand : table.subcommands("trivel3ctl"))
        expected.insert("trivel3ctl-" + subcommand);

    Names found;
    for (const auto& [name, page] : commandPages())
        found.insert(name);
    EXPECT_EQ(found, expected);
}

TEST(Manual, listsTheSubcommandsAsTheProgramDoes) {
    std::map<std::string, std::string> listed;
    std::string name;
    const auto pages = commandPages();
    for (const std::string& line : pages.at("trivel3ctl").at("SUBCOMMANDS")) {
        if (line.starts_with(".It Xr trivel3ctl-"))
            name = wordsIn(line.substr(18)).front();
        else if (!line.starts_with('.'))
            listed[name] += line;
    }
    auto expected = Table().offered("trivel3ctl", {""});
    for (auto& [subcommand, description] : expected)
        description += ".";
    EXPECT_EQ(listed, expected);
}

TEST(Manual, tellsEveryCommandOptionArgumentAndChoiceAndNoOther) {
    const Table table;
    for (const auto& [name, page] : commandPages()) {
        SCOPED_TRACE(name);
        const std::string command = std::regex_replace(name, std::regex("trivel3ctl-"), "trivel3ctl ");
        Names commands;
        for (const std::string& subcommand : name == "trivel3ctl" ? Names() : table.subcommands(command))
            commands.insert(command + " " + subcommand);
        if (commands.empty()) commands.insert(command);
        EXPECT_EQ(documentedCommands(name, page), commands);

        std::map<std::string, Names> expected;
        for (const std::string& each : commands)
            table.addArguments(each, expected);
        std::map<std::string, Names> told;
        for (const auto& [names, argument] : documentedArguments(page)) {
            // The longest stands for all: "--output" for "-o".
            std::string longest;
            for (const std::string& each : names)
                if (each.size() > longest.size()) longest = each;
            told[longest] = argument.choices;
        }
        EXPECT_EQ(told, expected);
    }
}

TEST(Manual, tellsWhatTheProgramsHelpTellsOfOptionsAndTheirValues) {
    const Table table;
    for (const auto& [name, page] : commandPages()) {
        SCOPED_TRACE(name);
        std::string help;
        for (const std::string& command : documentedCommands(name, page))
            help += table.help(command);
        for (const auto& [names, argument] : documentedArguments(page)) {
            const std::string all = joined(names);
            for (const std::string& each : names) {
                const bool takes = each.starts_with("--") && !argument.value.empty();
                EXPECT_THAT(help, HasSubstr(takes ? each + " " + argument.value : each)) << all;
            }
        }
    }
}

TEST(Manual, synopsisHasWhatIsToldBelow) {
    for (const auto& [name, page] : commandPages()) {
        SCOPED_TRACE(name);
        Names used;
        for (const std::string& line : page.at("SYNOPSIS")) {
            if (line.starts_with(".Nm")) continue;
            for (const std::string& each : argumentNames(line))
                used.insert(each);
        }
        used.erase("SUBCOMMAND");
        for (const auto& [names, argument] : documentedArguments(page)) {
            const std::size_t before = used.size();
            for (const std::string& each : names)
                used.erase(each);
            EXPECT_LT(used.size(), before) << "is missing: " << joined(names);
        }
        EXPECT_THAT(used, IsEmpty());
    }
}

TEST(Manual, saysOfEachCommandWhatItsHelpSays) {
    const Table table;
    for (const auto& [name, page] : commandPages()) {
        SCOPED_TRACE(name);
        std::string told = page.at("NAME").at(1).substr(4);
        const std::string command = std::regex_replace(name, std::regex("trivel3ctl-"), "trivel3ctl ");
        std::string expected = linesOf(table.help(command)).front();
        expected[0] = char(std::tolower(static_cast<unsigned char>(expected[0])));
        EXPECT_EQ(told, expected);
    }
}

TEST(Manual, refersToPagesThatAreThere) {
    for (const fs::path& file : everyPage()) {
        const std::string text = kit::readText(file);
        const std::regex reference("Xr (\\S+) ([0-9])");
        for (std::sregex_iterator each(text.begin(), text.end(), reference), end; each != end; ++each) {
            const std::string page = "/man" + each->str(2) + "/" + each->str(1) + "." + each->str(2);
            EXPECT_TRUE(fs::exists(TEST_MANUAL + page)) << file << " refers to " << page;
        }
    }
}

TEST(Manual, isCleanForMandoc) {
    if (!fs::exists(TEST_MANDOC)) GTEST_SKIP() << "there is no mandoc on this machine";
    Words command = {TEST_MANDOC, "-T", "lint"};
    for (const fs::path& file : everyPage())
        command.push_back(file);
    const Outcome outcome = Programs().run(command);
    EXPECT_EQ(outcome.errors, "");
    // It looks for pages where they are installed.
    for (const std::string& line : linesOf(outcome.output))
        EXPECT_THAT(line, HasSubstr("STYLE: referenced manual not found: Xr trivel3"));
}

TEST(Manual, isCleanForMan) {
    if (!fs::exists(TEST_MAN)) GTEST_SKIP() << "there is no man on this machine";
    Words command = {"sh", "-c",
                     "for page; do " TEST_MAN " --warnings -E UTF-8 -l -Tutf8 -Z \"$page\" >/dev/null; done", "sh"};
    for (const fs::path& file : everyPage())
        command.push_back(file);
    kit::expectDone(Programs().run(command));
}

// Each page's examples are run one after the other, as they stand, by a user who has just installed the programs.
TEST(Manual, examplesDoWhatTheyTell) {
    const kit::PrivateBus bus;
    for (const fs::path& file : everyPage()) {
        SCOPED_TRACE(file);
        if (!TEST_HAS_WINDOW && file.stem() == "trivel3-settings") continue;
        Programs programs;
        programs.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
        std::string script = "cd\n";
        std::string told;
        bool isExample = false;
        const Page page = readPage(file);
        for (const std::string& line : page.at("EXAMPLES")) {
            if (line.starts_with(".Bd") || line == ".Ed")
                isExample = line != ".Ed";
            else if (isExample)
                (line.starts_with("$ ") ? script += line.substr(2) + "\n" : told += line + "\n");
        }
        ASSERT_NE(script, "cd\n");
        const Outcome outcome = programs.run({"sh", "-e", "-c", script});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.output, told);
    }
}

TEST(Manual, filesAreWhereItTells) {
    Programs programs;
    kit::expectDone(programs.run({"trivel3ctl", "set", "HotCorners", "off"}));
    const std::string phone = programs.home() + "/.local/share/trivel3/phone";
    kit::writeText(phone + kit::settingsPath, "no property list");
    EXPECT_EQ(programs.run({"trivel3ctl", "set", "HotCorners", "off"}).status, 0);
    EXPECT_EQ(programs.run({"trivel3ctl", "--phone", "/proc", "list"}).status, 0);

    const std::string text = kit::readText(TEST_MANUAL "/man5/trivel3.5");
    for (const char* told : {".local/share/trivel3/phone", ".local/state/trivel3/history", ".local/state/trivel3/kept",
                             ".local/state/trivel3/mounts"}) {
        EXPECT_THAT(text, HasSubstr(std::string(".It Pa ~/") + told + "\n"));
        EXPECT_TRUE(fs::exists(programs.home() + "/" + told)) << told;
    }
    EXPECT_THAT(text, HasSubstr(std::string(".It Pa ") + kit::settingsPath + "\n"));
}

}  // namespace
}  // namespace command_lines_test
