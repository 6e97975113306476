// SPDX-License-Identifier: MIT
#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

json refusal(const json& answer, const std::string& reason) {
    EXPECT_EQ(answer.at("ok"), false);
    EXPECT_THAT(answer.at("error").get<std::string>(), HasSubstr(reason));
    EXPECT_TRUE(answer.contains("page"));
    return answer.at("events");
}

struct DriveRoot : testing::Test {
    DriveRoot() { ctl.usePhone(phone.folder); }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(DriveRoot, firstAnswerTellsWhatOpeningThePageDid) {
    Drive drive(ctl);
    const json answer = drive.show();
    EXPECT_EQ(answer.at("ok"), true);
    EXPECT_EQ(answer.at("events"), json::array({reloadOf(nullptr, 2, false), reloadOf(nullptr, 4, false)}));
    EXPECT_EQ(answer.at("page").at("class"), "KavixPreferencesController");
    EXPECT_EQ(answer.size(), 3U);

    EXPECT_EQ(drive.show().at("events"), json::array());
}

TEST_F(DriveRoot, switchingMultiCenterOffWritesTellsAndChangesTwoFooters) {
    Drive drive(ctl);
    drive.show();

    const json answer = drive.moveSwitch("Multi-Center", false);

    EXPECT_EQ(answer.at("ok"), true);
    EXPECT_EQ(answer.at("events"),
              json::array({written(), notified(), reloadOf(nullptr, 2, true), reloadOf(nullptr, 4, true)}));
    EXPECT_EQ(rowLabelled(answer, "Multi-Center").at("on"), false);
    EXPECT_THAT(answer.at("page").at("sections").at(1).at("footer").get<std::string>(), HasSubstr("pull up further."));
    EXPECT_THAT(answer.at("page").at("sections").at(2).at("footer").get<std::string>(),
                HasSubstr("or reveal the multitasking display"));
    EXPECT_EQ(readSettings(phone), settingsOf({{"MultiCenter", "<false/>"}}));
}

// A finger cannot tell either whether somebody else has changed the file since.
TEST_F(DriveRoot, switchThatStandsThereAlreadyIsHandedOnAllTheSame) {
    Drive drive(ctl);
    drive.show();
    const json answer = drive.moveSwitch("Hot Corners", true);
    EXPECT_EQ(answer.at("events"), json::array({written(), notified()}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<true/>"}}));
}

TEST_F(DriveRoot, failedWriteIsAnEventAndIsAnnouncedAllTheSame) {
    fs::create_directories(phone.settingsFile());
    Drive drive(ctl);
    drive.show();
    const json answer = drive.moveSwitch("Multi-Center", false);
    EXPECT_EQ(answer.at("ok"), true);
    EXPECT_EQ(answer.at("events"), json::array({written(false), notified()}));
    EXPECT_EQ(rowLabelled(answer, "Multi-Center").at("on"), true);
}

TEST_F(DriveRoot, writeThatIsNotTriedIsAnnouncedAllTheSame) {
    writeSettings(phone, settingsWithNull());
    Drive drive(ctl);
    drive.show();
    EXPECT_EQ(drive.moveSwitch("Hot Corners", false).at("events"), json::array({notified()}));
    EXPECT_EQ(readSettings(phone), settingsWithNull());
}

TEST_F(DriveRoot, changeFromElsewhereShowsWhenThePageAppearsAgain) {
    Drive drive(ctl);
    drive.show();
    writeSettings(phone, settingsOf({{"MultiCenter", "<false/>"}}));

    // The cells are produced anew at each answer, but the footers are the page's to change.
    const json before = drive.show();
    EXPECT_EQ(before.at("events"), json::array());
    EXPECT_EQ(rowLabelled(before, "Multi-Center").at("on"), false);

    const json answer = drive.send({{"do", "appear"}});
    EXPECT_EQ(answer.at("events"), json::array({reloadOf(nullptr, 2, false), reloadOf(nullptr, 4, false)}));
    EXPECT_THAT(answer.at("page").at("sections").at(1).at("footer").get<std::string>(), HasSubstr("pull up further."));
    EXPECT_EQ(drive.send({{"do", "appear"}}).at("events"), json::array());
}

TEST_F(DriveRoot, changeFromElsewhereShowsWhenThePageIsReloaded) {
    Drive drive(ctl);
    drive.show();
    writeSettings(phone, settingsOf({{"MultiCenter", "<false/>"}}));
    const json answer = drive.send({{"do", "reload"}});
    EXPECT_EQ(answer.at("ok"), true);
    EXPECT_EQ(answer.at("events"), json::array({reloadOf(nullptr, 2, false), reloadOf(nullptr, 4, false)}));
    EXPECT_EQ(labelsOf(answer).size(), 6U);
}

TEST_F(DriveRoot, linkIsFollowedAndLeftAgain) {
    Drive drive(ctl);
    drive.show();
    const json pushed = drive.tap("The Creators");
    EXPECT_EQ(pushed.at("events"), json::array({{{"event", "push"}, {"class", "KavixPreferencesProfileController"}}}));
    EXPECT_EQ(pushed.at("page").at("title"), "The Creators");
    EXPECT_EQ(pushed.at("page").at("class"), "KavixPreferencesProfileController");

    const json popped = drive.back();
    EXPECT_EQ(popped.at("ok"), true);
    EXPECT_EQ(popped.at("events"), json::array({{{"event", "pop"}, {"class", "KavixPreferencesController"}}}));
    EXPECT_EQ(popped.at("page").at("title"), "Trivel 3");
}

TEST_F(DriveRoot, thereIsNoWayBackFromTheFirstPage) {
    Drive drive(ctl);
    drive.show();
    EXPECT_EQ(refusal(drive.back(), "first page"), json::array());
}

TEST_F(DriveRoot, heartPresentsAPost) {
    Drive drive(ctl);
    drive.show();
    const json answer = drive.send({{"do", "heart"}});
    EXPECT_EQ(answer.at("ok"), true);
    EXPECT_EQ(answer.at("events"), json::array({{{"event", "present"},
                                                 {"composer", "post"},
                                                 {"animated", true},
                                                 {"service", "SLServiceTypeTwitter"},
                                                 {"text", "I'm loving #Trivel3 from @Fenwary!"}}}));
}

TEST_F(DriveRoot, postIsSentOrCancelledAndDismissesItself) {
    for (const char* result : {"sent", "cancelled"}) {
        Drive drive(ctl);
        drive.send({{"do", "heart"}});
        const json answer = drive.send({{"do", "composer"}, {"result", result}});
        EXPECT_EQ(answer.at("ok"), true);
        EXPECT_EQ(answer.at("events"), json::array({{{"event", "dismiss"}, {"animated", true}}}));
    }
}

TEST_F(DriveRoot, postIsNeitherSavedNorFails) {
    Drive drive(ctl);
    drive.send({{"do", "heart"}});
    for (const char* result : {"saved", "failed"}) {
        EXPECT_EQ(refusal(drive.send({{"do", "composer"}, {"result", result}}), "\"sent\" or \"cancelled\""),
                  json::array());
    }
    EXPECT_EQ(eventsOf(drive.send({{"do", "composer"}, {"result", "sent"}}), "dismiss").size(), 1U);
}

TEST_F(DriveRoot, supportPresentsAnEmailWithItsAttachment) {
    Drive drive(ctl);
    drive.show();
    const json answer = drive.tap("Fenwary Support");

    ASSERT_EQ(answer.at("events").size(), 1U);
    const json mail = answer.at("events").at(0);
    EXPECT_EQ(mail.at("event"), "present");
    EXPECT_EQ(mail.at("composer"), "mail");
    EXPECT_EQ(mail.at("animated"), true);
    EXPECT_EQ(mail.at("subject"), "Trivel Support");
    EXPECT_EQ(mail.at("to").size(), 1U);
    EXPECT_EQ(mail.at("body"), nullptr);
    ASSERT_EQ(mail.at("attachments").size(), 1U);
    const json attachment = mail.at("attachments").at(0);
    EXPECT_EQ(attachment.at("name"), "Trivel.plist");
    EXPECT_EQ(attachment.at("type"), "application/x-plist");
    const std::string copy = readText(attachment.at("path"));
    EXPECT_EQ(attachment.at("bytes"), copy.size());
    EXPECT_EQ(copy.substr(0, 8), "bplist00");
}

// Whoever drives may read it after the program has ended.
TEST_F(DriveRoot, copyOfAnAttachmentStaysForItsReader) {
    Drive drive(ctl);
    const json mail = eventsOf(drive.tap("Fenwary Support"), "present").at(0);
    const std::string path = mail.at("attachments").at(0).at("path");
    expectDone(drive.finish());

    EXPECT_TRUE(path.starts_with(ctl.temporaries() + "/"));
    EXPECT_EQ(fs::status(fs::path(path).parent_path()).permissions(), fs::perms::owner_all);
    expectDone(ctl.run({"plist", "lint", path}));
}

TEST_F(DriveRoot, attachmentWithoutACopyIsStillTold) {
    ctl.set("TMPDIR", ctl.folder() / "missing");
    Drive drive(ctl);
    const json mail = eventsOf(drive.tap("Fenwary Support"), "present").at(0);
    const json attachment = mail.at("attachments").at(0);
    EXPECT_EQ(attachment.at("path"), nullptr);
    EXPECT_GT(attachment.at("bytes"), 0);
}

TEST_F(DriveRoot, emailEndsInAnyOfFourWays) {
    for (const char* result : {"sent", "saved", "cancelled", "failed"}) {
        Drive drive(ctl);
        drive.tap("Fenwary Support");
        const json answer = drive.send({{"do", "composer"}, {"result", result}});
        EXPECT_EQ(answer.at("ok"), true);
        EXPECT_EQ(answer.at("events"), json::array({{{"event", "dismiss"}, {"animated", true}}}));
    }
}

TEST_F(DriveRoot, composerPresentedLastIsFinishedFirst) {
    Drive drive(ctl);
    drive.tap("Fenwary Support");
    EXPECT_EQ(drive.send({{"do", "heart"}}).at("ok"), true);
    refusal(drive.send({{"do", "composer"}, {"result", "saved"}}), "a post is");
    EXPECT_EQ(drive.send({{"do", "composer"}, {"result", "sent"}}).at("ok"), true);
    EXPECT_EQ(drive.send({{"do", "composer"}, {"result", "saved"}}).at("ok"), true);
    refusal(drive.send({{"do", "composer"}, {"result", "saved"}}), "no composer is presented");
}

TEST_F(DriveRoot, pageIsUsedOnWhileAComposerIsPresented) {
    Drive drive(ctl);
    drive.send({{"do", "heart"}});
    EXPECT_EQ(drive.moveSwitch("Hot Corners", false).at("events"), json::array({written(), notified()}));
}

TEST_F(DriveRoot, getAnswersWithKindAndValueAlone) {
    writeSettings(phone, settingsOf({{"A", "<array><integer>1</integer><string>x</string></array>"},
                                     {"B", "<data>AQI=</data>"},
                                     {"C", "<date>2014-12-25T10:00:00Z</date>"},
                                     {"D", "<dict><key>a</key><true/></dict>"},
                                     {"E", "<real>1.5</real>"},
                                     {"F", "<real>nan</real>"},
                                     {"G", "<string>text</string>"},
                                     {"H", "<integer>18446744073709551615</integer>"},
                                     {"MultiCenter", "<integer>1</integer>"}}));
    const std::map<std::string, std::pair<json, json>> expected = {
        {"A", {"array", {1, "x"}}},
        {"B", {"data", "AQI="}},
        {"C", {"date", "2014-12-25T10:00:00Z"}},
        {"D", {"dictionary", {{"a", true}}}},
        {"E", {"real", 1.5}},
        {"F", {"real", "nan"}},
        {"G", {"string", "text"}},
        {"H", {"integer", 18446744073709551615U}},
        {"MultiCenter", {"integer", 1}},
        {"HotCorners", {"boolean", true}},
        {"AlbumArtworkAutoDisplay", {"integer", 6}},
        {"CloseAllAppsExceptions", {"dictionary", json::object()}},
        {"OpenToLastAppWithQS", {nullptr, nullptr}},
        {"multicenter", {nullptr, nullptr}},
        {"", {nullptr, nullptr}}};
    Drive drive(ctl);
    for (const auto& [key, kindAndValue] : expected) {
        const json answer = {{"ok", true}, {"kind", kindAndValue.first}, {"value", kindAndValue.second}};
        EXPECT_EQ(drive.send({{"do", "get"}, {"key", key}}), answer) << key;
    }
}

TEST_F(DriveRoot, eventsWaitForTheAnswerThatHasRoomForThem) {
    Drive drive(ctl);
    drive.send({{"do", "get"}, {"key", "HotCorners"}});
    drive.sendLine("no JSON");
    EXPECT_EQ(drive.show().at("events").size(), 2U);
}

TEST_F(DriveRoot, rowsAreNamedByLabelOrByPlace) {
    Drive drive(ctl);
    drive.show();
    drive.moveSwitch({{"section", 2}, {"row", 0}}, false);
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_EQ(drive.tap({{"row", 0}, {"section", 4}}).at("page").at("title"), "The Creators");
}

TEST_F(DriveRoot, rowThatIsNotThereIsRefused) {
    Drive drive(ctl);
    drive.show();
    EXPECT_EQ(refusal(drive.tap("Hot corners"), "no row 'Hot corners'"), json::array());
    EXPECT_EQ(refusal(drive.tap(""), "no row ''"), json::array());
    EXPECT_EQ(refusal(drive.tap({{"section", 0}, {"row", 1}}), "no row 1 in section 0"), json::array());
    EXPECT_EQ(refusal(drive.tap({{"section", 6}, {"row", 0}}), "no row 0 in section 6"), json::array());
    refusal(drive.tap({{"section", 18446744073709551615U}, {"row", 18446744073709551615U}}), "no row");
}

TEST_F(DriveRoot, onlySwitchRowsAreSwitched) {
    Drive drive(ctl);
    drive.show();
    EXPECT_EQ(refusal(drive.moveSwitch("The Creators", true), "no switch"), json::array());
}

TEST_F(DriveRoot, urlsThatCountAsOpenableAreTheOnesThatAreNamed) {
    Drive without(ctl);
    without.tap("The Creators");
    const json asked = without.tap("Follow Fenwary");
    ASSERT_FALSE(eventsOf(asked, "can-open-url").empty());
    for (const json& event : eventsOf(asked, "can-open-url"))
        EXPECT_EQ(event.at("answer"), false);
    EXPECT_EQ(eventsOf(asked, "open-url").size(), 1U);

    Drive with(ctl, {"--can-open", "mailto,twitter"});
    with.tap("The Creators");
    const json answer = with.tap("Follow Fenwary");
    for (const json& event : eventsOf(answer, "can-open-url"))
        EXPECT_EQ(event.at("answer"), event.at("url").get<std::string>().starts_with("twitter:"));
    ASSERT_EQ(eventsOf(answer, "open-url").size(), 1U);
    EXPECT_THAT(eventsOf(answer, "open-url").at(0).at("url").get<std::string>(), testing::StartsWith("twitter:"));
}

TEST_F(DriveRoot, endOfInputEndsTheProgram) {
    const Outcome outcome = ctl.run({"drive"});
    expectDone(outcome);
    EXPECT_EQ(outcome.output, "");
}

TEST_F(DriveRoot, lastLineNeedsNoEnd) {
    const Outcome outcome = ctl.run({"drive"}, "{\"do\":\"show\"}\n{\"do\":\"get\",\"key\":\"HotCorners\"}");
    expectDone(outcome);
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 2);
    EXPECT_THAT(outcome.output, testing::EndsWith("\n{\"kind\":\"boolean\",\"ok\":true,\"value\":true}\n"));
}

}  // namespace
}  // namespace terminal_test
