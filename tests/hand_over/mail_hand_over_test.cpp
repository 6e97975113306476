// SPDX-License-Identifier: MIT
// What reaches the user's mail program.
#include "hosts/hand_over/hand_over.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "test_desktop.h"
#include "tests/kit/test_platform.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::SizeIs;

using Values = std::map<std::string, std::string>;

class MailHandOver : public testing::Test {
protected:
    MailHandOver() { kit::writeText(attached, bytes); }

    Values send(std::vector<std::string> more = {}) const {
        std::vector<std::string> arguments{"send", "subject=Trivel Support", "to=support@fenwary.example",
                                           "attach=" + attached + "|Trivel.plist|application/x-plist"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return desktop.probeNamed(arguments);
    }

    void installMailProgram() { desktop.installApplication("post", "Post Office", "x-scheme-handler/mailto;"); }
    void installMessageReader() { desktop.installApplication("letters", "Letters", "message/rfc822;"); }

    std::string draft() const { return desktop.home() + "/Documents/Trivel Support.eml"; }
    std::string cache() const { return desktop.home() + "/.cache/trivel3/mail"; }

    kit::TestDesktop desktop;
    std::string attached = desktop.elsewhere("report");
    std::string bytes = std::string("bplist00\0\xFF\r\n", 12);
};

TEST_F(MailHandOver, goesToTheMailProgramWithItsAttachment) {
    installMailProgram();
    desktop.installProgram("xdg-email");
    const Values outcome = send();
    EXPECT_EQ(outcome.at("program"), "Post Office");
    EXPECT_EQ(outcome.at("no program"), "");
    const auto runs = desktop.runsOf("xdg-email");
    ASSERT_THAT(runs, SizeIs(1));
    EXPECT_THAT(runs[0], ElementsAre("--utf8", "--subject", "Trivel Support", "--attach",
                                     MatchesRegex(cache() + "/[0-9]+/Trivel\\.plist"), "support@fenwary.example"));
    EXPECT_EQ(kit::readText(runs[0].at(4)), bytes);
}

TEST_F(MailHandOver, keepsADraftBesideWhatTheMailProgramGot) {
    installMailProgram();
    desktop.installProgram("xdg-email");
    EXPECT_EQ(send().at("draft"), draft());
    EXPECT_THAT(kit::readText(draft()), HasSubstr("X-Unsent: 1\r\n"));
}

TEST_F(MailHandOver, keepsTheFilesOfEachEmailApart) {
    installMailProgram();
    desktop.installProgram("xdg-email");
    send();
    send();
    const auto runs = desktop.runsOf("xdg-email");
    ASSERT_THAT(runs, SizeIs(2));
    EXPECT_NE(runs[0].at(4), runs[1].at(4));
    EXPECT_EQ(kit::readText(runs[0].at(4)), bytes);
}

TEST_F(MailHandOver, isADraftWhereThereIsNoDesktopAtAll) {
    const Values outcome = send();
    EXPECT_EQ(outcome.at("program"), "");
    EXPECT_EQ(outcome.at("draft"), draft());
    EXPECT_EQ(outcome.at("no program"), "no program for e-mail is set up");
    EXPECT_THAT(desktop.filesAtHome(), ElementsAre("Documents/Trivel Support.eml"));
}

TEST_F(MailHandOver, asksNoProgramWhereNoneIsSetUpForEmail) {
    desktop.installProgram("xdg-email");
    desktop.installProgram("xdg-open");
    send();
    EXPECT_THAT(desktop.runsOf("xdg-email"), IsEmpty());
    EXPECT_THAT(desktop.runsOf("xdg-open"), IsEmpty());
}

TEST_F(MailHandOver, saysThatXdgEmailIsMissing) {
    installMailProgram();
    const Values outcome = send();
    EXPECT_EQ(outcome.at("program"), "");
    EXPECT_EQ(outcome.at("draft"), draft());
    EXPECT_EQ(outcome.at("no program"), "xdg-email is not installed (it comes with xdg-utils)");
}

TEST_F(MailHandOver, saysWhyTheMailProgramDidNotTakeIt) {
    installMailProgram();
    desktop.installProgram("xdg-email", "exit 4");
    const Values outcome = send();
    EXPECT_EQ(outcome.at("program"), "");
    EXPECT_EQ(outcome.at("draft"), draft());
    EXPECT_EQ(outcome.at("no program"), "xdg-email: the program that it has started failed");
}

TEST_F(MailHandOver, opensTheDraftWhereAProgramReadsMessages) {
    installMessageReader();
    desktop.installProgram("xdg-open");
    const Values outcome = send();
    EXPECT_EQ(outcome.at("program"), "Letters");
    EXPECT_EQ(outcome.at("draft"), draft());
    EXPECT_EQ(outcome.at("no program"), "");
    EXPECT_THAT(desktop.runsOf("xdg-open"), ElementsAre(ElementsAre(draft())));
}

TEST_F(MailHandOver, opensTheDraftWhenTheMailProgramDidNotTakeIt) {
    installMailProgram();
    installMessageReader();
    desktop.installProgram("xdg-email", "exit 3");
    desktop.installProgram("xdg-open");
    const Values outcome = send();
    EXPECT_EQ(outcome.at("program"), "Letters");
    EXPECT_EQ(outcome.at("no program"), "");
}

TEST_F(MailHandOver, doesNotOpenTheDraftOnceTheMailProgramHasIt) {
    installMailProgram();
    installMessageReader();
    desktop.installProgram("xdg-email");
    desktop.installProgram("xdg-open");
    EXPECT_EQ(send().at("program"), "Post Office");
    EXPECT_THAT(desktop.runsOf("xdg-open"), IsEmpty());
}

// An editor that shows any text would show an e-mail's source.
TEST_F(MailHandOver, opensTheDraftInNoProgramForTextOfAnyKind) {
    kit::writeText(desktop.home() + "/.local/share/mime/subclasses", "message/rfc822 text/plain\n");
    desktop.installApplication("editor", "Editor", "text/plain;application/octet-stream;");
    desktop.installProgram("xdg-open");
    EXPECT_EQ(desktop.probe({"handler", "text/plain"}), std::vector<std::string>{"Editor"});
    EXPECT_EQ(send().at("program"), "");
    EXPECT_THAT(desktop.runsOf("xdg-open"), IsEmpty());
}

TEST_F(MailHandOver, reachesTheMailProgramEvenWhereNoDraftCanBeSaved) {
    installMailProgram();
    desktop.installProgram("xdg-email");
    desktop.setEnvironment("XDG_DOCUMENTS_DIR", attached + "/papers");
    const Values outcome = send();
    EXPECT_EQ(outcome.at("program"), "Post Office");
    EXPECT_EQ(outcome.at("draft"), "");
    EXPECT_THAT(outcome.at("no draft"), HasSubstr("cannot make the folder " + attached + "/papers"));
}

TEST_F(MailHandOver, saysWhyNothingWasDoneWhereNothingCouldBe) {
    desktop.setEnvironment("XDG_DOCUMENTS_DIR", attached + "/papers");
    const Values outcome = send();
    EXPECT_EQ(outcome.at("program"), "");
    EXPECT_EQ(outcome.at("draft"), "");
    EXPECT_THAT(outcome.at("no draft"), HasSubstr("cannot make the folder " + attached + "/papers"));
}

TEST_F(MailHandOver, isADraftAloneWhenTheFilesForTheMailProgramCannotBeWritten) {
    installMailProgram();
    desktop.installProgram("xdg-email");
    desktop.setEnvironment("XDG_CACHE_HOME", attached + "/cache");
    const Values outcome = send();
    EXPECT_EQ(outcome.at("program"), "");
    EXPECT_EQ(outcome.at("draft"), draft());
    EXPECT_THAT(outcome.at("no program"), HasSubstr("cannot make the folder " + attached + "/cache/trivel3/mail/"));
    EXPECT_THAT(desktop.runsOf("xdg-email"), IsEmpty());
}

TEST_F(MailHandOver, leavesNoHalfWrittenFileForTheMailProgram) {
    installMailProgram();
    desktop.installProgram("xdg-email");
    kit::writeText(attached, std::string(100000, 'x'));
    const Values outcome = send({"limit=20000"});
    EXPECT_THAT(outcome.at("no draft"), HasSubstr("File too large"));
    EXPECT_THAT(desktop.filesAtHome(), Not(Contains(HasSubstr("Trivel"))));
    EXPECT_THAT(desktop.runsOf("xdg-email"), IsEmpty());
}

TEST_F(MailHandOver, removesTheFilesOfEarlierEmailsAfterAWeek) {
    using std::filesystem::last_write_time;
    const auto now = std::filesystem::file_time_type::clock::now();
    for (const std::string name : {"old", "recent"})
        kit::writeText(cache() + "/" + name + "/Trivel.plist", name);
    last_write_time(cache() + "/old", now - std::chrono::hours{24 * 8});
    last_write_time(cache() + "/recent", now - std::chrono::hours{24 * 6});
    installMailProgram();
    desktop.installProgram("xdg-email");
    send();
    EXPECT_EQ(kit::readText(cache() + "/old/Trivel.plist"), "(no file)");
    EXPECT_EQ(kit::readText(cache() + "/recent/Trivel.plist"), "recent");
}

TEST_F(MailHandOver, letsNoRecipientBecomeAnOption) {
    installMailProgram();
    desktop.installProgram("xdg-email");
    const Values outcome = send({"to=--attach=/etc/passwd@example.org"});
    EXPECT_EQ(outcome.at("program"), "");
    EXPECT_THAT(desktop.runsOf("xdg-email"), IsEmpty());
}

TEST_F(MailHandOver, letsNoAttachmentLeaveItsFolder) {
    installMailProgram();
    desktop.installProgram("xdg-email");
    send({"attach=" + attached + "|../../../.profile|application/x-plist"});
    EXPECT_EQ(kit::readText(desktop.home() + "/.profile"), "(no file)");
    EXPECT_THAT(desktop.runsOf("xdg-email").at(0).at(6), MatchesRegex(cache() + "/[0-9]+/-\\.\\.-\\.\\.-\\.profile"));
}

TEST_F(MailHandOver, attachesNothingWhereThereIsNoData) {
    installMailProgram();
    desktop.installProgram("xdg-email");
    desktop.probe(
        {"send", "subject=Trivel Support", "to=support@fenwary.example", "attach=|Trivel.plist|application/x-plist"});
    EXPECT_THAT(desktop.runsOf("xdg-email"),
                ElementsAre(ElementsAre("--utf8", "--subject", "Trivel Support", "support@fenwary.example")));
}

TEST_F(MailHandOver, saysThatAModuleIsMissing) {
    kit::TestPlatform platform;
    platform::MFMailComposeViewController composer{platform.services()};
    hosts::Desktop nowhere{"/no/such/desktop.so"};
    hosts::XdgPrograms programs;
    hosts::UrlOpener opener{nowhere, programs};
    const auto withoutMail =
        hosts::DesktopHandOver{"/no/such/mail.so", nowhere, programs, opener}.sendMail(composer, desktop.home());
    EXPECT_FALSE(withoutMail.program);
    ASSERT_FALSE(withoutMail.draft);
    EXPECT_THAT(withoutMail.draft.error().text(), HasSubstr("cannot load the mail module: /no/such/mail.so"));
    const std::string mail = std::string{TEST_MODULES} + "/libtrivel3mail.so";
    hosts::DesktopHandOver withoutDesktop{mail, nowhere, programs, opener};
    const auto folder = withoutDesktop.draftFolder();
    ASSERT_FALSE(folder);
    EXPECT_THAT(folder.error().text(), HasSubstr("cannot load the desktop module: /no/such/desktop.so"));
    EXPECT_FALSE(withoutDesktop.sendMail(composer, desktop.home()).program);
}

}  // namespace
