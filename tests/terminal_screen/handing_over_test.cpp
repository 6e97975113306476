// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "hosts/notifications/session_notify_center.h"
#include "tests/kit/private_bus.h"
#include "tests/terminal_screen/opened_screen.h"

namespace terminal_screen_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* opener = "echo \"$1\" > \"$HOME/opened.new\"; mv \"$HOME/opened.new\" \"$HOME/opened\"";

// Where documents go in a terminal's home folder.
std::filesystem::path documents(const OpenedScreen& screen) {
    return screen.terminal.home() / "Documents";
}

std::vector<std::filesystem::path> draftsIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> drafts;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".eml") drafts.push_back(entry.path());
    }
    return drafts;
}

TEST(ScreenMail, showsTheEmailAndCanBeCancelled) {
    OpenedScreen screen({.width = 40, .height = 12});
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    EXPECT_THAT(screen.terminal.rowWith("To "), HasSubstr("@"));
    EXPECT_THAT(screen.terminal.rowWith("Subject"), HasSubstr("Trivel Support"));
    EXPECT_THAT(screen.terminal.rowWith("Attachment"), HasSubstr("Trivel.plist ("));
    EXPECT_THAT(screen.terminal.text(), HasSubstr("[ Send ]  [ Save draft ]  [ Cancel ]"));
    screen.terminal.press({"Escape"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Fenwary Support"));
}

TEST(ScreenMail, doesNothingWithTheReportOnTheKeyThatHasOpenedIt) {
    OpenedScreen screen;
    std::filesystem::create_directory(documents(screen));
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Enter", "Space"});
    EXPECT_TRUE(screen.terminal.waitFor("Tab goes to the buttons")) << screen.terminal.text();
    EXPECT_THAT(screen.terminal.lines().front(), HasSubstr("New E-mail"));
    EXPECT_THAT(draftsIn(screen.terminal.home()), IsEmpty());
}

TEST(ScreenMail, goesRoundItsButtonsWithTab) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    for (const char* focused : {"[>Send<]", "[>Save draft<]", "[>Cancel<]", "[ Send ]  [ Save draft ]  [ Cancel ]"}) {
        screen.terminal.press({"Tab"});
        EXPECT_TRUE(screen.terminal.waitFor(focused)) << screen.terminal.text();
    }
    for (const char* focused : {"[>Cancel<]", "[>Save draft<]", "[>Send<]"}) {
        screen.terminal.press({"BTab"});
        EXPECT_TRUE(screen.terminal.waitFor(focused)) << screen.terminal.text();
    }
}

TEST(ScreenMail, savesADraftAmongTheDocumentsAndSaysWhere) {
    OpenedScreen screen;
    std::filesystem::create_directory(documents(screen));
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Tab", "Tab", "Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("Draft: ")) << screen.terminal.text();
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Fenwary Support"));
    EXPECT_THAT(draftsIn(documents(screen)), SizeIs(1));
}

TEST(ScreenMail, keepsTheEmailAsADraftWhereNoProgramTakesIt) {
    OpenedScreen screen;
    std::filesystem::create_directory(documents(screen));
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Tab", "Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("Not sent (")) << screen.terminal.text();
    EXPECT_THAT(screen.terminal.text(), HasSubstr(".eml"));
}

TEST(ScreenMail, asksWhereTheDraftIsToGoWhereThereIsNoDocumentsFolder) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Tab", "Tab", "Enter"});
    ASSERT_TRUE(screen.terminal.waitFor("Where to Keep the Draft")) << screen.terminal.text();
    EXPECT_THAT(screen.terminal.text(), HasSubstr("/Documents"));
    EXPECT_THAT(draftsIn(screen.terminal.home()), IsEmpty());
    screen.terminal.type("/mine");
    screen.terminal.press({"Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("Draft: ")) << screen.terminal.text();
    EXPECT_THAT(draftsIn(documents(screen) / "mine"), SizeIs(1));
}

TEST(ScreenMail, takesNoFolderOfWhichItIsNotToldWhereItIs) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Tab", "Enter"});
    ASSERT_TRUE(screen.terminal.waitFor("Where to Keep the Draft"));
    screen.terminal.press({"Home"});
    screen.terminal.type("x");
    screen.terminal.press({"Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("A folder's path begins with / or ~/")) << screen.terminal.text();
    EXPECT_THAT(screen.terminal.lines().front(), HasSubstr("Where to Keep the Draft"));
    screen.terminal.press({"Escape"});
    ASSERT_TRUE(screen.terminal.waitFor("New E-mail"));
    screen.terminal.press({"Escape"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Fenwary Support"));
    EXPECT_THAT(draftsIn(screen.terminal.home()), IsEmpty());
}

TEST(ScreenMail, endsWhereItCanBeNeitherSentNorSavedAndBeginsAgainOnAKey) {
    OpenedScreen screen({.environment = {{"XDG_DOCUMENTS_DIR", "/sys"}}});
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Tab", "Enter"});
    ASSERT_TRUE(screen.terminal.waitFor("b Begin again")) << screen.terminal.text();
    EXPECT_THAT(screen.terminal.text(), HasSubstr("The e-mail was not sent ("));
    EXPECT_THAT(screen.terminal.text(), HasSubstr("cannot make a file in /sys"));
    EXPECT_THAT(screen.terminal.lines().front(), HasSubstr("Trivel 3")) << "its page has dismissed it";
    screen.terminal.press({"b"});
    ASSERT_TRUE(screen.terminal.waitFor("New E-mail"));
    EXPECT_THAT(screen.terminal.rowWith("Attachment"), HasSubstr("Trivel.plist ("));
    screen.terminal.press({"Tab", "Tab", "Enter"});
    ASSERT_TRUE(screen.terminal.waitFor("Where to Keep the Draft")) << "the folder has not taken it";
    screen.terminal.press({"BSpace", "BSpace", "BSpace", "BSpace"});
    screen.terminal.type(documents(screen).string());
    screen.terminal.press({"Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("Draft: ")) << screen.terminal.text();
    EXPECT_THAT(draftsIn(documents(screen)), SizeIs(1));
}

TEST(ScreenMail, tellsOfADraftThatCouldNotBeSavedEvenWhereAProgramTookTheEmail) {
    OpenedScreen screen({.environment = {{"XDG_DOCUMENTS_DIR", "/sys"}}});
    screen.terminal.installProgram("xdg-email", "exit 0");
    const std::filesystem::path home = screen.terminal.home();
    std::filesystem::create_directories(home / ".local/share/applications");
    std::ofstream(home / ".local/share/applications/post.desktop")
        << "[Desktop Entry]\nType=Application\nName=Post Office\nExec=/bin/true %u\n"
           "MimeType=x-scheme-handler/mailto;\n";
    std::ofstream(home / ".local/share/applications/mimeinfo.cache")
        << "[MIME Cache]\nx-scheme-handler/mailto=post.desktop;\n";
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Tab", "Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("The e-mail is open in Post Office, but no draft was saved: "))
        << screen.terminal.text();
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Fenwary Support"));
}

TEST(ScreenPost, opensThePostAsTheUserLeftIt) {
    OpenedScreen screen;
    screen.terminal.installProgram("xdg-open", opener);
    screen.terminal.press({"h"});
    ASSERT_TRUE(screen.terminal.waitFor("I'm loving #Trivel3 from @Fenwary!"));
    screen.terminal.press({"BSpace"});
    screen.terminal.type(", né?");
    ASSERT_TRUE(screen.terminal.waitFor("@Fenwary, né?"));
    screen.terminal.press({"Enter", "Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("open in your browser"));
    EXPECT_EQ(screen.terminal.waitForFile("opened"),
              "https://twitter.com/intent/tweet?text=I%27m%20loving%20%23Trivel3%20from%20%40Fenwary%2C%20n%C3%A9%3F");
}

TEST(ScreenPost, staysWithItsAddressWhereNothingOpensIt) {
    OpenedScreen screen;
    screen.terminal.installProgram("xdg-open", "exit 3");
    screen.terminal.press({"h"});
    ASSERT_TRUE(screen.terminal.waitFor("New Post"));
    screen.terminal.press({"Tab", "Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("https://twitter.com/intent/tweet?text="));
    EXPECT_THAT(screen.terminal.lines().front(), HasSubstr("New Post"));
    screen.terminal.press({"Escape"});
    EXPECT_TRUE(screen.terminal.waitFor("Multi-Center"));
}

TEST(ScreenPost, isKeptUntilTheUserAgreesThatItGoes) {
    OpenedScreen screen;
    screen.terminal.press({"h"});
    ASSERT_TRUE(screen.terminal.waitFor("New Post"));
    screen.terminal.type("!!");
    for (const char* key : {"Escape", "C-c"}) {
        screen.terminal.press({key});
        ASSERT_TRUE(screen.terminal.waitFor("[>Keep writing<]")) << key;
        screen.terminal.press({"Enter"});
        ASSERT_TRUE(screen.terminal.waitFor("@Fenwary!!!")) << "what was typed is still there";
    }
    screen.terminal.press({"Escape"});
    ASSERT_TRUE(screen.terminal.waitFor("Discard the Post?"));
    screen.terminal.press({"Tab"});
    ASSERT_TRUE(screen.terminal.waitFor("[>Discard<]"));
    screen.terminal.press({"Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("Multi-Center"));
}

TEST(ScreenPost, goesWithoutAQuestionWhileItIsThePages) {
    OpenedScreen screen;
    screen.terminal.press({"h"});
    ASSERT_TRUE(screen.terminal.waitFor("New Post"));
    screen.terminal.press({"x", "BSpace", "Escape"});
    EXPECT_TRUE(screen.terminal.waitFor("Multi-Center"));
    screen.terminal.press({"h"});
    ASSERT_TRUE(screen.terminal.waitFor("New Post"));
    screen.terminal.press({"C-c"});
    EXPECT_EQ(screen.terminal.waitForEnd(), 0);
}

TEST(ScreenPost, goesWithTheProgramOnceTheUserHasAgreed) {
    OpenedScreen screen;
    screen.terminal.press({"h"});
    ASSERT_TRUE(screen.terminal.waitFor("New Post"));
    // A terminal drops what was typed just before the interrupt.
    screen.terminal.press({"!"});
    ASSERT_TRUE(screen.terminal.waitFor("@Fenwary!!"));
    screen.terminal.press({"C-c"});
    ASSERT_TRUE(screen.terminal.waitFor("[>Keep writing<]"));
    screen.terminal.press({"BTab", "Enter"});
    EXPECT_EQ(screen.terminal.waitForEnd(), 0);
}

TEST(ScreenPost, isNotDroppedUnseenWhereTheTerminalIsTooSmall) {
    OpenedScreen screen;
    screen.terminal.press({"h"});
    ASSERT_TRUE(screen.terminal.waitFor("New Post"));
    screen.terminal.press({"!"});
    ASSERT_TRUE(screen.terminal.waitFor("@Fenwary!!"));
    screen.terminal.resize(39, 12);
    ASSERT_TRUE(screen.terminal.waitFor("Q quits and discards the post")) << screen.terminal.text();
    screen.terminal.press({"q"});
    screen.terminal.resize(80, 24);
    ASSERT_TRUE(screen.terminal.waitFor("@Fenwary!!"));
    screen.terminal.resize(39, 12);
    ASSERT_TRUE(screen.terminal.waitFor("Q quits"));
    screen.terminal.press({"Q"});
    EXPECT_EQ(screen.terminal.waitForEnd(), 0);
}

TEST(ScreenPost, saysHowMuchIsLeftAndTakesNoMore) {
    OpenedScreen screen;
    screen.terminal.installProgram("xdg-open", opener);
    screen.terminal.press({"h"});
    ASSERT_TRUE(screen.terminal.waitFor("106 characters left")) << screen.terminal.text();
    screen.terminal.type(std::string(105, 'x'));
    ASSERT_TRUE(screen.terminal.waitFor("1 character left"));
    screen.terminal.type("yyyy");
    ASSERT_TRUE(screen.terminal.waitFor("3 characters too many"));
    screen.terminal.press({"Enter", "Enter"});
    ASSERT_TRUE(screen.terminal.waitFor("The post is too long: 3 characters too many"));
    screen.terminal.press({"Tab", "Tab", "BSpace", "BSpace", "BSpace"});
    ASSERT_TRUE(screen.terminal.waitFor("0 characters left"));
    EXPECT_FALSE(std::filesystem::exists(screen.terminal.home() / "opened"));
    screen.terminal.press({"Enter", "Enter"});
    EXPECT_THAT(screen.terminal.waitForFile("opened"), testing::EndsWith("xxxy"));
}

TEST(ScreenLinks, openInTheUsersBrowser) {
    OpenedScreen screen;
    screen.terminal.installProgram("xdg-open", opener);
    ASSERT_TRUE(screen.open("The Creators"));
    screen.terminal.press({"Enter"});
    EXPECT_EQ(screen.terminal.waitForFile("opened"), "https://twitter.com/Daxon_QT");
    EXPECT_TRUE(screen.terminal.waitFor("Opened https://twitter.com/Daxon_QT"));
}

TEST(ScreenNotifications, goOutWithEachWrite) {
    kit::PrivateBus bus;
    kit::SessionBusAddress address(bus.address());
    hosts::SessionNotifyCenter center(TEST_BUS_MODULE);
    const auto stream = center.observe();
    ASSERT_TRUE(stream) << stream.error().text();
    OpenedScreen screen({.environment = {{"DBUS_SESSION_BUS_ADDRESS", bus.address()}}});
    screen.terminal.press({"Space"});
    EXPECT_EQ(hosts::waitForNotification(**stream, -1, std::chrono::seconds(20)),
              "com.fenwary.trivel3.preferencesChanged");
}

}  // namespace
}  // namespace terminal_screen_test
