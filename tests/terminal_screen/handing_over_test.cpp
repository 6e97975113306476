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

constexpr const char* opener = "echo \"$1\" > \"$HOME/opened.new\"; mv \"$HOME/opened.new\" \"$HOME/opened\"";

TEST(ScreenMail, showsTheEmailAndCanBeCancelled) {
    OpenedScreen screen({.width = 40, .height = 12});
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    EXPECT_THAT(screen.terminal.rowWith("To "), HasSubstr("@"));
    EXPECT_THAT(screen.terminal.rowWith("Subject"), HasSubstr("Trivel Support"));
    EXPECT_THAT(screen.terminal.rowWith("Attachment"), HasSubstr("Trivel.plist ("));
    EXPECT_THAT(screen.terminal.text(), HasSubstr("[>Send<]  [ Save draft ]  [ Cancel ]"));
    screen.terminal.press({"Escape"});
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Fenwary Support"));
}

TEST(ScreenMail, savesADraftAndSaysWhere) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Tab", "Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("Draft: ")) << screen.terminal.text();
    EXPECT_TRUE(screen.terminal.waitForRow("▸", "Fenwary Support"));
    bool isThere = false;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(screen.terminal.home()))
        isThere = isThere || entry.path().extension() == ".eml";
    EXPECT_TRUE(isThere);
}

TEST(ScreenMail, keepsTheEmailAsADraftWhereNoProgramTakesIt) {
    OpenedScreen screen;
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Enter"});
    EXPECT_TRUE(screen.terminal.waitFor("Not sent (")) << screen.terminal.text();
    EXPECT_THAT(screen.terminal.text(), HasSubstr(".eml"));
}

TEST(ScreenMail, tellsOfADraftThatCouldNotBeSavedEvenWhereAProgramTookTheEmail) {
    OpenedScreen screen({.environment = {{"XDG_DOCUMENTS_DIR", "/dev/null/papers"}}});
    screen.terminal.installProgram("xdg-email", "exit 0");
    const std::filesystem::path home = screen.terminal.home();
    std::filesystem::create_directories(home / ".local/share/applications");
    std::ofstream(home / ".local/share/applications/post.desktop")
        << "[Desktop Entry]\nType=Application\nName=Post Office\nExec=/bin/true %u\n"
           "MimeType=x-scheme-handler/mailto;\n";
    std::ofstream(home / ".local/share/applications/mimeinfo.cache")
        << "[MIME Cache]\nx-scheme-handler/mailto=post.desktop;\n";
    ASSERT_TRUE(screen.open("Fenwary Support", "New E-mail"));
    screen.terminal.press({"Enter"});
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
