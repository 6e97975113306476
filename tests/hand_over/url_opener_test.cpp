// SPDX-License-Identifier: MIT
#include "hosts/hand_over/url_opener.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include "hosts/system/descriptor.h"
#include "test_desktop.h"

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class UrlOpener : public testing::Test {
protected:
    bool canOpen(const std::string& url) const {
        return desktop.probe({"can-open", url}) == std::vector<std::string>{"yes"};
    }
    std::vector<std::string> open(const std::string& url) const { return desktop.probe({"open", url}); }

    kit::TestDesktop desktop;
};

using Answers = std::vector<std::string>;
const Answers opened{"opened", ""};

TEST_F(UrlOpener, findsNoProgramWhereNoneIsInstalled) {
    for (const char* url : {"https://twitter.com/Fenwary", "twitter:///user?screen_name=Fenwary",
                            "tweetbot:///user_profile/Fenwary", "cydia://package/com.fenwary.ostrel"}) {
        EXPECT_FALSE(canOpen(url)) << url;
    }
}

TEST_F(UrlOpener, findsTheProgramThatClaimsTheScheme) {
    desktop.installApplication("chirp", "Chirp", "x-scheme-handler/twitter;");
    EXPECT_TRUE(canOpen("twitter:///user?screen_name=Fenwary"));
    EXPECT_FALSE(canOpen("tweetbot:///user_profile/Fenwary"));
}

TEST_F(UrlOpener, findsTheProgramThatTheUserHasChosen) {
    desktop.installApplication("chirp", "Chirp", "");
    EXPECT_FALSE(canOpen("tweetbot:///user_profile/Fenwary"));
    desktop.chooseApplication("Default Applications", "x-scheme-handler/tweetbot=chirp.desktop");
    EXPECT_TRUE(canOpen("tweetbot:///user_profile/Fenwary"));
}

TEST_F(UrlOpener, respectsThatTheUserHasTakenAProgramOut) {
    desktop.installApplication("chirp", "Chirp", "x-scheme-handler/twitter;");
    desktop.chooseApplication("Removed Associations", "x-scheme-handler/twitter=chirp.desktop;");
    EXPECT_FALSE(canOpen("twitter:///user?screen_name=Fenwary"));
}

TEST_F(UrlOpener, findsNoProgramWhoseExecutableIsGone) {
    desktop.installApplication("gone", "Gone", "x-scheme-handler/twitter;", "/no/such/program");
    EXPECT_FALSE(canOpen("twitter:///user?screen_name=Fenwary"));
}

TEST_F(UrlOpener, findsNoProgramThatIsChosenButNotInstalled) {
    desktop.chooseApplication("Default Applications", "x-scheme-handler/twitter=nobody.desktop");
    EXPECT_FALSE(canOpen("twitter:///user?screen_name=Fenwary"));
}

TEST_F(UrlOpener, takesSchemesInCapitalLettersForTheSame) {
    desktop.installApplication("chirp", "Chirp", "x-scheme-handler/twitter;");
    EXPECT_TRUE(canOpen("TWITTER:///user?screen_name=Fenwary"));
}

TEST_F(UrlOpener, saysThatNothingOpensSchemesThatAreNotThePanes) {
    desktop.installApplication("all", "All",
                               "x-scheme-handler/http;x-scheme-handler/file;x-scheme-handler/ftp;x-scheme-handler/;");
    for (const char* url : {"http://twitter.com", "file:///etc/passwd", "ftp://host/", "", ":", "//host", "twitter",
                            "twitter/../https:x", "https /x:"}) {
        EXPECT_FALSE(canOpen(url)) << url;
    }
}

TEST_F(UrlOpener, knowsNoProgramWithoutItsModule) {
    hosts::Desktop nothing{"/no/such/module.so"};
    hosts::XdgPrograms programs;
    hosts::UrlOpener opener{nothing, programs};
    EXPECT_FALSE(opener.canOpenURL("https://twitter.com/"));
    const auto library = nothing.library();
    ASSERT_FALSE(library);
    EXPECT_THAT(library.error().text(), HasSubstr("cannot load the desktop module: /no/such/module.so"));
}

TEST_F(UrlOpener, handsAnAddressOverAsItIs) {
    desktop.installProgram("xdg-open");
    for (const std::string url :
         {"https://twitter.com/Daxon_QT", "twitter:///user?screen_name=MovaneX", "tweetbot:///user_profile/Fenwary",
          "cydia://package/com.fenwary.ostrel", "mailto:support@fenwary.example",
          "https://twitter.com/intent/tweet?text=%24%28touch%20x%29"}) {
        EXPECT_EQ(open(url), opened);
        ASSERT_FALSE(desktop.runsOf("xdg-open").empty());
        EXPECT_THAT(desktop.runsOf("xdg-open").back(), ElementsAre(url));
    }
}

TEST_F(UrlOpener, letsNoShellSeeAnAddress) {
    desktop.installProgram("xdg-open");
    const std::string url = "https://twitter.com/$(:>" + desktop.elsewhere("harm") + ");`:`&|<>'\"*?{}\\";
    EXPECT_EQ(open(url), opened);
    EXPECT_THAT(desktop.runsOf("xdg-open"), ElementsAre(ElementsAre(url)));
    EXPECT_EQ(kit::readText(desktop.elsewhere("harm")), "(no file)");
}

TEST_F(UrlOpener, opensOnlyTheSchemesThatThePaneUses) {
    desktop.installProgram("xdg-open");
    for (const char* url : {"http://twitter.com/", "file:///etc/passwd", "javascript:alert(1)", "/etc/passwd", "-h",
                            "--help", "https", "", "ssh://host", " https://twitter.com", "x:https://twitter.com"}) {
        const Answers answer = open(url);
        EXPECT_EQ(answer.at(0), "refused") << url;
        EXPECT_THAT(answer.at(1), HasSubstr("not opened")) << url;
    }
    EXPECT_THAT(desktop.runsOf("xdg-open"), IsEmpty());
}

TEST_F(UrlOpener, refusesAddressesWithBlanksOrControlCharacters) {
    desktop.installProgram("xdg-open");
    for (const char* url : {"https://twitter.com/a b", "https://twitter.com/\n", "https://twitter.com/\x1b[2J"}) {
        EXPECT_EQ(open(url).at(0), "refused") << url;
    }
    EXPECT_THAT(desktop.runsOf("xdg-open"), IsEmpty());
}

TEST_F(UrlOpener, hearsOfAFailureAlthoughTheStarterPaidNoHeedToItsPrograms) {
    desktop.installProgram("xdg-open", "exit 3");
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    hosts::Desktop unused{"/no/such/module.so"};
    hosts::XdgPrograms programs;
    const auto outcome = hosts::UrlOpener{unused, programs}.open("https://twitter.com/");
    std::signal(SIGCHLD, before);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().text(), "xdg-open: it finds no program for this");
}

TEST_F(UrlOpener, saysThatTheProgramToOpenWithIsMissing) {
    EXPECT_THAT(open("https://twitter.com/"),
                ElementsAre("refused", "xdg-open is not installed (it comes with xdg-utils)"));
}

TEST_F(UrlOpener, saysWhyTheDesktopDidNotOpenAnAddress) {
    desktop.installProgram("xdg-open", "exit 3");
    EXPECT_THAT(open("https://twitter.com/"), ElementsAre("refused", "xdg-open: it finds no program for this"));
    desktop.installProgram("xdg-open", "exit 4");
    EXPECT_THAT(open("https://twitter.com/"),
                ElementsAre("refused", "xdg-open: the program that it has started failed"));
    desktop.installProgram("xdg-open", "exit 77");
    EXPECT_THAT(open("https://twitter.com/"), ElementsAre("refused", "xdg-open: exit status 77"));
    desktop.installProgram("xdg-open", "kill -9 $$");
    EXPECT_THAT(open("https://twitter.com/"), ElementsAre("refused", "xdg-open: it was ended by signal 9"));
}

TEST_F(UrlOpener, saysWhatKeepsTheProgramFromStarting) {
    kit::writeText(desktop.elsewhere("bin/xdg-open"), "no program");
    EXPECT_THAT(open("https://twitter.com/"), ElementsAre("refused", HasSubstr("cannot start xdg-open: ")));
}

TEST_F(UrlOpener, doesNotWaitForAProgramThatStays) {
    desktop.installProgram("xdg-open", "exec /bin/sleep 600");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(open("https://twitter.com/"), opened);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, hosts::XdgPrograms::patience + 5s);
}

TEST_F(UrlOpener, givesTheProgramNothingOfItsOwn) {
    const std::string leak = desktop.elsewhere("leak");
    const hosts::Descriptor inherited{::open(leak.c_str(), O_WRONLY | O_CREAT, 0600)};
    desktop.installProgram("xdg-open",
                           "standard=$(/bin/readlink /proc/$$/fd/[012])\n"
                           "printf '%s\\n' \"$standard\" >'" +
                               desktop.elsewhere("standard") + "'\n/bin/readlink /proc/$$/fd/* >'" +
                               desktop.elsewhere("all") + "'\nexit 0");
    EXPECT_EQ(open("https://twitter.com/"), opened);
    EXPECT_EQ(kit::readText(desktop.elsewhere("standard")), "/dev/null\n/dev/null\n/dev/null\n");
    EXPECT_THAT(kit::readText(desktop.elsewhere("all")), testing::Not(HasSubstr(leak)));
}

TEST_F(UrlOpener, opensThePostComposerOfTheNetwork) {
    desktop.installProgram("xdg-open");
    const std::string link = "https://twitter.com/intent/tweet?text=I%27m%20loving%20%23Trivel3%20from%20%40Fenwary%21";
    EXPECT_THAT(desktop.probe({"post", "SLServiceTypeTwitter", "I'm loving #Trivel3 from @Fenwary!"}),
                ElementsAre("posted", "", ""));
    EXPECT_THAT(desktop.runsOf("xdg-open"), ElementsAre(ElementsAre(link)));
}

TEST_F(UrlOpener, keepsThePostsAddressWhenItCannotBeOpened) {
    EXPECT_THAT(desktop.probe({"post", "SLServiceTypeTwitter", "a"}),
                ElementsAre("refused", "https://twitter.com/intent/tweet?text=a",
                            "xdg-open is not installed (it comes with xdg-utils)"));
}

TEST_F(UrlOpener, postsNothingToAServiceThatItDoesNotKnow) {
    desktop.installProgram("xdg-open");
    EXPECT_THAT(desktop.probe({"post", "SLServiceTypeOther", "a"}),
                ElementsAre("refused", "", "there is no way to post to the service SLServiceTypeOther"));
    EXPECT_THAT(desktop.runsOf("xdg-open"), IsEmpty());
}

}  // namespace
