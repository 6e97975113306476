// SPDX-License-Identifier: MIT
#include <algorithm>
#include <filesystem>
#include <set>

#include "programs.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace command_lines_test {
namespace {

namespace fs = std::filesystem;
using kit::expectDone;
using kit::linesOf;
using kit::Outcome;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::Pair;
using testing::UnorderedElementsAre;
using Words = Programs::Words;

// What a phone may call a setting to have something run by whoever completes it.
constexpr const char* hostileKey = "Z$(touch hacked)`touch hacked`;touch hacked|'\"&\\!x ~*";

// A phone with settings of its own, and a folder to work in.
struct Desk : Programs {
    Desk() {
        fs::create_directories(phone + "/var");
        environment["TRIVEL3_PHONE"] = phone;
        expectDone(run({"trivel3ctl", "set", "HotCorners", "off"}));
        kit::writeText(work + "/File one.plist", "");
        fs::create_directories(work + "/Folder here/below");
        kit::writeText(work + "/Folder.txt", "");
    }

    std::string phone = folder / "phone";
    std::string work = folder / "work";
};

std::vector<std::string> keysOf(const std::map<std::string, std::string>& words) {
    std::vector<std::string> keys;
    for (const auto& [word, description] : words)
        keys.push_back(word);
    return keys;
}

TEST(CompleteWords, offersSubcommandsAndWhatTheyTake) {
    const Desk desk;
    EXPECT_THAT(desk.offered({"trivel3ctl", ""}), Contains(Pair("show", "Print a page as it would look now")));
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "plist", ""})), ElementsAre("convert", "lint"));
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "plist", "convert", ""})), ElementsAre("binary1", "json", "xml1"));
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "plist", "convert", "xml1", ""})), ElementsAre("files"));
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "--phone", ""})), ElementsAre("folders"));
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "--phone="})), ElementsAre("folders"));
    const auto ofList = desk.offered({"trivel3ctl", "list", "-"});
    EXPECT_THAT(ofList, Contains(Pair("--json", "Print them as JSON")));
    EXPECT_THAT(ofList, Contains(Key("--phone")));
    EXPECT_EQ(desk.offered({"trivel3ctl", "monitor", ""}), desk.offered({"trivel3ctl", "monitor", "-"}));
}

// A page may be named as a subcommand is, or as an option.
TEST(CompleteWords, takesNoFurtherSubcommandAndNoOptionAfterTwoDashes) {
    const Desk desk;
    EXPECT_THAT(desk.offered({"trivel3ctl", "show", "list", ""}), Contains(Key("--json")));
    EXPECT_THAT(desk.offered({"trivel3ctl", "show", "--", "-"}), Contains(Key("Advanced Options")));
}

TEST(CompleteWords, offersDevices) {
    const Desk desk;
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "show", "--device", ""})),
                ElementsAre("phone-3.5", "phone-4", "phone-4.7", "phone-5.5", "tablet"));
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "--device=t"})), Contains("--device=tablet"));
}

TEST(CompleteWords, offersThePagesThatShowPrints) {
    const Desk desk;
    const auto pages = keysOf(desk.offered({"trivel3ctl", "show", ""}));
    EXPECT_THAT(pages, Contains("Advanced Options/Slider Actions"));
    EXPECT_THAT(pages, Contains("The Creators"));
    for (const std::string& page : pages)
        expectDone(desk.run({"trivel3ctl", "show", page}));
    // A tablet has no sliders.
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "--device", "tablet", "show", ""})),
                testing::Not(Contains("Advanced Options/Slider Actions")));
}

TEST(CompleteWords, offersTheKeysOfListAndThoseThatOnlyTheFileHolds) {
    const Desk desk;
    expectDone(desk.run({"trivel3ctl", "set", "OwnKey", "--type", "string", "text"}));
    std::set<std::string> expected = {"OwnKey"};
    for (const std::string& line : linesOf(desk.run({"trivel3ctl", "list"}).output))
        expected.insert(line.substr(0, line.find(' ')));

    const auto keys = desk.offered({"trivel3ctl", "get", ""});
    EXPECT_THAT(keysOf(keys), testing::ElementsAreArray(expected));
    EXPECT_EQ(keys.at("HotCorners"), "false");
    EXPECT_EQ(desk.offered({"trivel3ctl", "reset", "HotCorners", "Mul"}), keys);
}

TEST(CompleteWords, offersValuesThatSetTakesWithTheNamesOfChoices) {
    const Desk desk;
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "set", "HotCorners", ""})), ElementsAre("false", "true"));
    const auto choices = desk.offered({"trivel3ctl", "set", "SliderActionsBrightness", ""});
    EXPECT_THAT(choices, ElementsAre(Pair("0", "Set Brightness to Minimum"), Pair("1", "Set Brightness to Maximum"),
                                     Pair("2", "Toggle Auto-Brightness")));
    for (const auto& [value, name] : choices)
        expectDone(desk.run({"trivel3ctl", "set", "SliderActionsBrightness", value}));
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "set", "--type=bool", "OwnKey", ""})), ElementsAre("false", "true"));
    EXPECT_THAT(desk.offered({"trivel3ctl", "set", "CloseAllAppsExceptions", ""}), IsEmpty());
}

TEST(CompleteWords, offersChangesThatAreNotUndoneAndThoseThatKeepBytes) {
    const Desk desk;
    kit::writeText(desk.phone + kit::settingsPath, "no property list");
    EXPECT_EQ(desk.run({"trivel3ctl", "set", "MultiCenter", "off"}).status, 0);
    EXPECT_THAT(desk.offered({"trivel3ctl", "undo", ""}),
                ElementsAre(Pair("1", "HotCorners: (nothing) -> false"), Pair("2", "MultiCenter: (nothing) -> false")));
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "history", "--bytes", ""})), ElementsAre("2"));
    expectDone(desk.run({"trivel3ctl", "undo"}));
    EXPECT_THAT(keysOf(desk.offered({"trivel3ctl", "undo", ""})), ElementsAre("1", "3"));
}

TEST(CompleteWords, looksAtThePhoneThatTheCommandLineNames) {
    Desk desk;
    expectDone(desk.run({"trivel3ctl", "set", "OwnKey", "--type", "int", "7"}));
    desk.environment.erase("TRIVEL3_PHONE");
    fs::rename(desk.phone, desk.home() + "/phone");
    EXPECT_THAT(desk.offered({"trivel3ctl", "--phone", "~/phone", "get", ""}), Contains(Pair("OwnKey", "7")));
    EXPECT_THAT(desk.offered({"trivel3ctl", "get", "--phone=" + desk.home() + "/phone", ""}),
                Contains(Pair("OwnKey", "7")));
}

TEST(CompleteWords, makesAndChangesNothing) {
    Desk desk;
    // A page would repair this when it appears.
    EXPECT_EQ(desk.run({"trivel3ctl", "set", "SliderActionsBrightness", "77"}).status, 0);
    fs::remove_all(desk.home());
    const std::string before = kit::readText(desk.phone + kit::settingsPath);
    for (const Words& words : {Words{"show", ""}, {"get", ""}, {"set", "SliderActionsBrightness", ""}, {"undo", ""}}) {
        Words command = {"trivel3ctl"};
        command.insert(command.end(), words.begin(), words.end());
        desk.environment["TRIVEL3_PHONE"] = desk.phone;
        desk.offered(command);
        desk.environment.erase("TRIVEL3_PHONE");
        // The sample has pages and settings, but nobody has changed it.
        EXPECT_EQ(desk.offered(command).empty(), words.front() == "undo");
    }
    EXPECT_EQ(kit::readText(desk.phone + kit::settingsPath), before);
    EXPECT_FALSE(fs::exists(desk.home()));
}

TEST(CompleteWords, offersOptionsAndSubcommandsWithoutAPhone) {
    Desk desk;
    desk.environment["TRIVEL3_PHONE"] = desk.folder / "missing";
    EXPECT_THAT(desk.offered({"trivel3ctl", ""}), Contains(Key("show")));
    EXPECT_THAT(desk.offered({"trivel3ctl", "get", ""}), IsEmpty());
    EXPECT_THAT(desk.offered({"trivel3ctl", "show", ""}), IsEmpty());
}

TEST(CompleteWords, leavesOutWhatCouldSteerATerminal) {
    const Desk desk;
    kit::writeText(desk.phone + kit::settingsPath, kit::settingsOf({{"Bad\nkey", "<true/>"},
                                                                    {"Bad\tkey", "<true/>"},
                                                                    {"Bad\u202Ekey", "<true/>"},
                                                                    {"Good", "<string>a\nb\tc\u202E</string>"}}));
    const auto keys = desk.offered({"trivel3ctl", "get", ""});
    EXPECT_THAT(keys, Contains(Key("Good")));
    EXPECT_TRUE(std::ranges::none_of(keysOf(keys), [](const std::string& key) { return key.starts_with("Bad"); }));
    EXPECT_THAT(keys.at("Good"), testing::Not(testing::ContainsRegex("[\n\t\u202E]")));
}

// What is typed before the tab key, and what the last word of the command line is then.
struct Typed {
    std::string line;
    std::string word;
};

std::vector<Typed> typedLines() {
    std::vector<Typed> lines = {
        {"trivel3ctl sho", "show"},
        {"trivel3ctl show Advanced\\ Options/Sli", "Advanced Options/Slider Actions"},
        {"trivel3ctl show \"Advanced Options/Sli", "Advanced Options/Slider Actions"},
        {"trivel3ctl show 'Advanced Options/Sli", "Advanced Options/Slider Actions"},
        {"trivel3ctl show --js", "--json"},
        {"trivel3ctl --device tab", "tablet"},
        {"trivel3ctl show --device=tab", "--device=tablet"},
        {"trivel3ctl get MultiC", "MultiCenter"},
        {"trivel3ctl get Z", hostileKey},
        {"trivel3ctl set HotCorners tr", "true"},
        {"trivel3ctl plist convert bin", "binary1"},
        {"trivel3ctl plist lint Fi", "File one.plist"},
        {"trivel3ctl --phone Fol", "Folder here/"},
        {"trivel3ctl --phone=Fol", "--phone=Folder here/"},
    };
    if (TEST_HAS_WINDOW) {
        lines.push_back({"trivel3-settings --appe", "--appearance"});
        lines.push_back({"trivel3-settings --contrast hi", "high"});
    }
    return lines;
}

// The real shells, where the programs are installed for their user, on a hostile phone.
class Shells : public testing::Test {
protected:
    Shells() {
        std::string key = hostileKey;
        for (std::size_t at = 0; (at = key.find('&', at)) != std::string::npos; ++at)
            key.replace(at, 1, "&amp;");
        kit::writeText(desk.phone + kit::settingsPath, kit::settingsOf({{key, "<true/>"}}));
        desk.environment["XDG_DATA_DIRS"] = TEST_SHARE;
        desk.environment["TERM"] = "xterm";
        desk.environment["HISTFILE"] = "/dev/null";
    }

    ~Shells() override { EXPECT_FALSE(fs::exists(desk.work + "/hacked")); }

    // What defines commands by the programs' names, which note their last word. Completion calls the programs
    // themselves.
    static std::string notingCommands() {
        return "trivel3ctl() { eval \"printf '<%s>\\n' \\\"\\${$#}\\\"\" >> noted; }\n"
               "trivel3-settings() { trivel3ctl \"$@\"; }\n";
    }

    void expectNoted() const {
        Words expected;
        for (const Typed& typed : typedLines())
            expected.push_back("<" + typed.word + ">");
        EXPECT_EQ(linesOf(kit::readText(desk.work + "/noted")), expected);
    }

    // `setUp` are lines that a user's start file may have.
    void expectBashCompletes(const std::string& setUp) const {
        std::string input = "cd " + desk.work + "\n" + setUp + notingCommands();
        for (const Typed& typed : typedLines())
            input += typed.line + "\t\n";
        const Outcome outcome = desk.run({TEST_BASH, "--norc", "--noprofile", "-i"}, input);
        SCOPED_TRACE(outcome.errors);
        expectNoted();
    }

    Desk desk;
};

TEST_F(Shells, bashCompletesByItself) {
    std::string setUp;
    for (const auto& file : fs::directory_iterator(TEST_SHARE "/bash-completion/completions"))
        setUp += ". " + file.path().string() + "\n";
    expectBashCompletes(setUp);
}

TEST_F(Shells, bashCompletesWithBashCompletion) {
    if (!fs::exists(TEST_BASH_COMPLETION)) GTEST_SKIP() << "there is no bash-completion on this machine";
    expectBashCompletes(". " TEST_BASH_COMPLETION "\n");
}

TEST_F(Shells, bashOffersSeveralWordsAndSaysNothingElse) {
    const std::string script = "cd " + desk.work +
                               "\n. " TEST_SHARE
                               "/bash-completion/completions/trivel3ctl\n"
                               "compopt() { :; }\n"
                               "COMP_LINE=$1 COMP_POINT=${#1}\n"
                               "_trivel3ctl trivel3ctl \"$2\"\n"
                               "printf '%s\\n' \"${COMPREPLY[@]}\"\n";
    auto offered = [&](const std::string& line, const std::string& last) {
        const Outcome outcome = desk.run({TEST_BASH, "-c", script, "bash", line, last});
        expectDone(outcome);
        return linesOf(outcome.output);
    };
    EXPECT_THAT(offered("trivel3ctl set HotCorners ", ""), ElementsAre("true", "false"));
    EXPECT_THAT(offered("trivel3ctl --device=phone-4", "phone-4"), ElementsAre("phone-4", "phone-4.7"));
    // What cannot stand between the quotation marks as it is.
    EXPECT_THAT(offered("trivel3ctl get \"Z", "Z"), ElementsAre(""));
    EXPECT_THAT(offered("trivel3ctl get 'Z", "Z"), ElementsAre(""));
    EXPECT_THAT(offered("trivel3ctl get $(touch hacked) `touch hacked` \"$(touch hacked)\" <(touch hacked) ", ""),
                testing::Not(IsEmpty()));
    desk.environment["TRIVEL3_PHONE"] = desk.folder / "missing";
    EXPECT_THAT(offered("trivel3ctl get ", ""), ElementsAre(""));
}

TEST_F(Shells, zshCompletes) {
    if (!fs::exists(TEST_ZSH)) GTEST_SKIP() << "there is no zsh on this machine";
    kit::writeText(desk.work + "/start", "PS1=READY:\nsetopt no_auto_remove_slash\nfpath=(" TEST_SHARE
                                         "/zsh/vendor-completions $fpath)\n"
                                         "autoload -Uz compinit\ncompinit -u -D\n" +
                                             notingCommands());
    // A shell at work for its user, to whom the other one types when it has asked for the next command.
    std::string script = "zmodload zsh/zpty\ncd " + desk.work +
                         "\nzpty shell " TEST_ZSH
                         " -f -i\n"
                         "type() { zpty -w -n shell $1; zpty -r shell answer \"*$2*\"; }\n"
                         "type $'. ./start\\n' READY:\n";
    Words command = {TEST_ZSH, "-f", "-c", "", "zsh"};
    for (const Typed& typed : typedLines())
        command.push_back(typed.line);
    command[3] = script +
                 "for line; do type $line$'\\t'; type $'\\n' READY:; done\n"
                 "zpty -w shell exit\n";
    const Outcome outcome = desk.run(command);
    SCOPED_TRACE(outcome.errors + outcome.output);
    expectNoted();
}

TEST_F(Shells, fishCompletes) {
    if (!fs::exists(TEST_FISH)) GTEST_SKIP() << "there is no fish on this machine";
    // Escaped as it would be inserted, and read again by the shell.
    const std::string script =
        "cd " + desk.work +
        "\nset -g fish_complete_path " TEST_SHARE
        "/fish/vendor_completions.d $fish_complete_path\n"
        "for line in $argv\n"
        "    eval printf \"'<%s>\\n'\" (complete --escape -C $line | string replace -r '\\t.*' '') "
        ">> noted\n"
        "end\n";
    Words command = {TEST_FISH, "--no-config", "-c", script};
    for (const Typed& typed : typedLines())
        command.push_back(typed.line);
    expectDone(desk.run(command));
    expectNoted();
}

}  // namespace
}  // namespace command_lines_test
