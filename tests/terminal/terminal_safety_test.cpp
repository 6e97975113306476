// SPDX-License-Identifier: MIT
// What a phone's files hold may be made to steer the terminal that it is shown on. It must not.
#include "drive.h"
#include "platform/foundation/property_list.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/private_bus.h"

namespace terminal_test {

using namespace kit;

namespace {

using testing::HasSubstr;

// Escape sequences, their one-character forms, what reorders a line and what ends it.
const std::string attack = "A\x1b]0;owned\x07\x1b[2J\u009b31m\x7f\u0090\u2028\u202e\u2066\r\nB";

bool steers(const std::string& text, std::size_t place) {
    const auto byte = static_cast<unsigned char>(text[place]);
    if (byte == '\r') return text.compare(place, 2, "\r\n") != 0;
    if (byte < 0x20 || byte == 0x7F) return byte != '\n';
    for (const std::string sequence : {"\u2028", "\u202e", "\u2066"}) {
        if (text.compare(place, sequence.size(), sequence) == 0) return true;
    }
    return byte == 0xC2 && place + 1 < text.size() && static_cast<unsigned char>(text[place + 1]) < 0xA0;
}

void expectTame(const std::string& text) {
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (steers(text, place)) {
            ADD_FAILURE() << "at " << place << " of " << testing::PrintToString(text);
            return;
        }
    }
}

struct TerminalSafety : testing::Test {
    TerminalSafety() {
        ctl.usePhone(phone.folder);
        ctl.set("NO_COLOR", "1");
        install(attack);
    }

    // Binary lists say any text; an identifier may hold what is not a control of ASCII.
    void install(const std::string& name) {
        const std::string folder = phone.folder + "/Applications/Evil\x1b[2J\u009b\u202e.app";
        const platform::Dictionary info = {{"CFBundleIdentifier", "example.\u009b2J\u202e"},
                                           {"CFBundleDisplayName", name}};
        writeText(folder + "/Info.plist", *platform::writeBinaryPropertyList(info).bytes);
    }
    void storeAttack() {
        const platform::Dictionary inner = {{attack, attack}};
        const platform::Dictionary content = {{"HotCorners", attack}, {attack, attack}, {"MultiCenter", inner}};
        writeSettings(phone, *platform::writeBinaryPropertyList(content).bytes);
    }
    Outcome runOnTerminal(const Trivel3ctl::Arguments& arguments) {
        Outcome outcome = ctl.runOnTerminal(arguments, 80);
        expectTame(outcome.output);
        expectTame(outcome.errors);
        return outcome;
    }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(TerminalSafety, pagesShowAttackingNamesAsText) {
    for (const char* page : {"Advanced Options/Disable in Applications", "Advanced Options/Close All Apps"}) {
        SCOPED_TRACE(page);
        EXPECT_THAT(runOnTerminal({"show", page, "--verbose"}).output, HasSubstr("]0;owned"));
        const Outcome json = runOnTerminal({"show", page, "--json"});
        EXPECT_THAT(json.output, HasSubstr("\\u009b"));
        EXPECT_THAT(json.output, HasSubstr("\\u202e"));
    }
}

TEST_F(TerminalSafety, settingsShowAttackingValuesAsText) {
    storeAttack();
    for (const Trivel3ctl::Arguments& arguments : {Trivel3ctl::Arguments{"list"},
                                                   {"list", "--json"},
                                                   {"get", "HotCorners"},
                                                   {"get", attack},
                                                   {"get", attack + "!"},
                                                   {"set", attack + "!", "1"},
                                                   {"reset", attack},
                                                   {"show"},
                                                   {"show", attack}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        runOnTerminal(arguments);
    }
}

// A program that asks for the value gets it.
TEST_F(TerminalSafety, valuesGoIntoAPipeAsTheyAre) {
    storeAttack();
    EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, attack + "\n");
}

TEST_F(TerminalSafety, linesOfATextStayLinesOnATerminal) {
    writeSettings(phone, settingsOf({{"Mine", "<string>one\n\ttwo</string>"}}));
    EXPECT_EQ(ctl.runOnTerminal({"get", "Mine"}, 80).output, "one\r\n\ttwo\r\n");
}

TEST_F(TerminalSafety, monitorShowsAttackingChangesAsText) {
    const PrivateBus bus;
    ctl.set("DBUS_SESSION_BUS_ADDRESS", bus.address());
    RunningTrivel3ctl monitor(ctl, {"monitor"});
    RunningTrivel3ctl inJson(ctl, {"monitor", "--json"});
    EXPECT_EQ(monitor.readErrorLine(), "listening");
    EXPECT_EQ(inJson.readErrorLine(), "listening");
    // As another program writes it: ours would not.
    writeSettings(phone, settingsOf({{attack, "<string>" + std::string(attack) + "</string>"}}));
    expectDone(ctl.run({"set", "HotCorners", "off"}));
    const std::string line = inJson.readLine().value_or("");
    expectTame(line);
    EXPECT_EQ(json::parse(line).at("changes").at(0).at("key"), attack);
    monitor.readLine();
    const std::string change = monitor.readLine().value_or("");
    EXPECT_THAT(change, HasSubstr("owned"));
    expectTame(change);
}

TEST_F(TerminalSafety, answersOfADrivenSessionHoldAttackingTextEscaped) {
    RunningTrivel3ctl program(ctl, {"drive"});
    program.send("{\"do\":\"tap\",\"row\":\"Advanced Options\"}\n");
    program.send("{\"do\":\"tap\",\"row\":\"Disable in Applications\"}\n");
    program.readLine();
    const std::string answer = program.readLine().value_or("");
    EXPECT_THAT(answer, HasSubstr("\\u009b"));
    expectTame(answer);
}

}  // namespace
}  // namespace terminal_test
