// SPDX-License-Identifier: MIT
// The pages below the root page, used from outside as a finger would: what each command writes, posts
// and changes on the screen.
#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

const std::vector<std::string> conditions = {"Always", "If no Media is Playing", "If AirPlay is undetected",
                                             "If AirDrop is Off"};
const std::vector<std::string> delays = {"After 1 second", "After 3 seconds", "After 5 seconds", "After 8 seconds"};

// A group row and the rows after it, as the events tell them.
json withGroupRow(const std::vector<std::string>& labels) {
    json rows = json::array({nullptr});
    for (const std::string& label : labels)
        rows.push_back(label);
    return rows;
}

json insertion(const json& rows, int position, bool animated) {
    return {{"event", "insert"}, {"rows", rows}, {"position", position}, {"animated", animated}};
}

json removal(const json& rows, int position, bool animated) {
    return {{"event", "remove"}, {"rows", rows}, {"position", position}, {"animated", animated}};
}

json reloads(int first, const json& rows) {
    json events = json::array();
    for (std::size_t i = 0; i < rows.size(); ++i)
        events.push_back(reloadOf(rows[i], first + static_cast<int>(i), true));
    return events;
}

json together(std::initializer_list<json> parts) {
    json all = json::array();
    for (const json& part : parts) {
        if (part.is_array())
            all.insert(all.end(), part.begin(), part.end());
        else
            all.push_back(part);
    }
    return all;
}

std::vector<std::string> checkedLabels(const json& answer) {
    std::vector<std::string> labels;
    for (const json& row : rowsOf(answer)) {
        if (row.at("checked") == true) labels.push_back(row.at("label"));
    }
    return labels;
}

struct DrivePages : testing::Test {
    DrivePages() { ctl.usePhone(phone.folder); }

    // Opens the page that the titles lead to.
    json open(Drive& drive, const std::vector<std::string>& titles) {
        json answer;
        for (const std::string& title : titles)
            answer = drive.tap(title);
        return answer;
    }

    Trivel3ctl ctl;
    Phone phone;
};

// With both displays on, which is the default, the page repairs two settings each time it appears.
TEST_F(DrivePages, optionsPageRepairsTrimsAndGreysAsItAppears) {
    Drive drive(ctl);
    drive.show();
    const json answer = drive.tap("Advanced Options");

    EXPECT_EQ(answer.at("events").at(0), (json{{"event", "push"}, {"class", "KavixPreferencesOptionsController"}}));
    EXPECT_EQ(eventsOf(answer, "write").size(), 2U);
    EXPECT_EQ(eventsOf(answer, "notification").size(), 2U);
    EXPECT_EQ(eventsOf(answer, "remove"),
              std::vector<json>{removal(json::array({"Apply to Quick Switcher"}), 10, false)});
    for (const json& event : eventsOf(answer, "reload"))
        EXPECT_EQ(event.at("animated"), false);
    EXPECT_EQ(readSettings(phone), settingsOf({{"AccessAppSwitcher", "<false/>"},
                                               {"MinimalControlCenterCondition", "<integer>1</integer>"}}));
    std::vector<std::string> greyed;
    for (const json& row : rowsOf(answer)) {
        if (row.at("enabled") == false) greyed.push_back(row.at("label"));
    }
    EXPECT_THAT(greyed,
                ElementsAre("If AirPlay is undetected", "If AirDrop is Off", "Quick Launcher", "Access App Switcher"));
    EXPECT_EQ(rowLabelled(answer, "Ostrel").at("icon"), "Ostrel");
}

TEST_F(DrivePages, pageThatAppearsAgainRepeatsItsRepairsAlone) {
    Drive drive(ctl);
    drive.tap("Advanced Options");
    EXPECT_EQ(drive.send({{"do", "appear"}}).at("events"), together({written(), notified(), written(), notified()}));
}

TEST_F(DrivePages, minimalDisplayTakesItsConditionsAlong) {
    writeSettings(phone, settingsOf({{"MinimalControlCenterCondition", "<integer>5</integer>"},
                                     {"QuickSwitcher", "<false/>"},
                                     {"ReachabilityMode", "<false/>"}}));
    Drive drive(ctl);
    drive.tap("Advanced Options");

    const json off = drive.moveSwitch("Minimal Display", false);
    EXPECT_EQ(eventsOf(off, "remove"), std::vector<json>{removal(conditions, 4, true)});
    EXPECT_THAT(labelsOf(off), Not(Contains("Always")));

    const json on = drive.moveSwitch("Minimal Display", true);
    EXPECT_EQ(eventsOf(on, "insert"), std::vector<json>{insertion(conditions, 4, true)});
    EXPECT_THAT(checkedLabels(on), ElementsAre("If no Media is Playing", "If AirDrop is Off"));
}

TEST_F(DrivePages, conditionsAreFlagsThatAreWrittenAndRedrawnAsAGroup) {
    writeSettings(phone, settingsOf({{"ReachabilityMode", "<false/>"}}));
    Drive drive(ctl);
    drive.tap("Advanced Options");

    const json answer = drive.tap("If AirPlay is undetected");
    json group = {nullptr, "Minimal Display"};
    for (const std::string& label : conditions)
        group.push_back(label);
    EXPECT_EQ(answer.at("events"), together({written(), notified(), reloads(2, group)}));
    EXPECT_THAT(checkedLabels(answer), ElementsAre("If no Media is Playing", "If AirPlay is undetected"));
    EXPECT_EQ(drive.send({{"do", "get"}, {"key", "MinimalControlCenterCondition"}}).at("value"), 3);

    EXPECT_THAT(checkedLabels(drive.tap("Always")), ElementsAre("Always"));
    EXPECT_EQ(drive.tap("Always").at("events"), json::array());
}

TEST_F(DrivePages, tapOnAGreyedRowIsTakenAndDoesNothing) {
    Drive drive(ctl);
    drive.tap("Advanced Options");
    for (const char* label : {"Quick Launcher", "If AirDrop is Off"}) {
        const json answer = drive.tap(label);
        EXPECT_EQ(answer.at("ok"), true) << label;
        EXPECT_EQ(answer.at("events"), json::array()) << label;
        EXPECT_EQ(answer.at("page").at("title"), "Advanced Options");
    }
}

TEST_F(DrivePages, greyedSwitchIsNotMoved) {
    Drive drive(ctl);
    drive.tap("Advanced Options");
    const std::string before = readSettings(phone);
    const json answer = drive.moveSwitch("Access App Switcher", true);
    EXPECT_EQ(answer.at("ok"), false);
    EXPECT_EQ(answer.at("error"), "the row is greyed");
    EXPECT_EQ(answer.at("events"), json::array());
    EXPECT_EQ(readSettings(phone), before);
}

TEST_F(DrivePages, reloadBringsTheWholePageBackAndTrimsIt) {
    Drive drive(ctl);
    drive.tap("Advanced Options");
    const json answer = drive.send({{"do", "reload"}});
    EXPECT_EQ(eventsOf(answer, "remove"),
              std::vector<json>{removal(json::array({"Apply to Quick Switcher"}), 10, false)});
    EXPECT_THAT(labelsOf(answer), Not(Contains("Apply to Quick Switcher")));
}

TEST_F(DrivePages, smallPhonesAndTabletsDoWithoutSomeRows) {
    Drive small(ctl, {"--device", "phone-3.5"});
    EXPECT_THAT(labelsOf(small.tap("Advanced Options")), Not(Contains("Minimal Display")));
    Drive tablet(ctl, {"--device", "tablet"});
    EXPECT_THAT(
        labelsOf(tablet.tap("Advanced Options")),
        ElementsAre("Open to Last App", "Album Artwork", "Close All Apps", "Access Home Screen", "Access App Switcher",
                    "Invert Hot Corners", "Disable in Applications", "Disable Double-Click Home", "Ostrel"));
}

TEST_F(DrivePages, siblingThatIsNotInstalledLeadsToItsPackage) {
    Drive drive(ctl);
    drive.tap("Advanced Options");
    EXPECT_EQ(drive.tap("Ostrel").at("events"),
              json::array({{{"event", "open-url"}, {"url", "cydia://package/com.fenwary.ostrel"}}}));
}

TEST_F(DrivePages, labelThatStandsTwiceIsAmbiguous) {
    writeSettings(phone, settingsOf({{"ReachabilityMode", "<false/>"}}));
    Drive drive(ctl);
    open(drive, {"Advanced Options", "Quick Launcher"});
    const json answer = drive.tap("Auto-Dismiss");
    EXPECT_EQ(answer.at("ok"), false);
    EXPECT_EQ(answer.at("error"), "the page shows 2 rows 'Auto-Dismiss': name one by its section and row");
    EXPECT_EQ(answer.at("events"), json::array());
}

TEST_F(DrivePages, autoDismissBringsItsDelays) {
    writeSettings(phone, settingsOf({{"ReachabilityMode", "<false/>"}}));
    Drive drive(ctl);
    const json opened = open(drive, {"Advanced Options", "Quick Launcher"});
    EXPECT_EQ(eventsOf(opened, "remove"), std::vector<json>{removal(withGroupRow(delays), 8, false)});

    const json on = drive.tap({{"section", 0}, {"row", 2}});
    EXPECT_EQ(on.at("events"),
              together({written(), notified(), reloads(0, {nullptr, "Display", "Do Not Display", "Auto-Dismiss"}),
                        insertion(withGroupRow(delays), 8, true)}));
    EXPECT_THAT(checkedLabels(on), ElementsAre("Auto-Dismiss", "Do Not Display", "After 3 seconds"));

    const json off = drive.tap({{"section", 0}, {"row", 1}});
    EXPECT_EQ(eventsOf(off, "remove"), std::vector<json>{removal(withGroupRow(delays), 8, true)});
}

TEST_F(DrivePages, sliderActionsAreChosenOneOfThree) {
    Drive drive(ctl);
    open(drive, {"Advanced Options", "Slider Actions"});
    const json answer = drive.tap("Set Volume to Minimum");
    EXPECT_EQ(
        answer.at("events"),
        together({written(), notified(),
                  reloads(4, {nullptr, "Switch to Ringer Volume", "Set Volume to Minimum", "Set Volume to Maximum"})}));
    EXPECT_THAT(checkedLabels(answer), IsSupersetOf({"Toggle Auto-Brightness", "Set Volume to Minimum"}));
    EXPECT_EQ(drive.tap("Set Volume to Minimum").at("events"), json::array());
    EXPECT_EQ(drive.moveSwitch("Disable Slider HUD", true).at("events"), together({written(), notified()}));
}

TEST_F(DrivePages, lastAutoDisplayTakesTheDelaysAlong) {
    Drive drive(ctl);
    open(drive, {"Advanced Options", "Album Artwork"});
    EXPECT_EQ(eventsOf(drive.tap("On Next"), "remove"), std::vector<json>());
    EXPECT_EQ(eventsOf(drive.tap("On Previous"), "remove"), std::vector<json>{removal(withGroupRow(delays), 4, true)});
    EXPECT_EQ(drive.send({{"do", "get"}, {"key", "AlbumArtworkAutoDisplay"}}).at("value"), 0);
    EXPECT_EQ(eventsOf(drive.tap("On Play"), "insert"), std::vector<json>{insertion(withGroupRow(delays), 4, true)});
}

TEST_F(DrivePages, sparedApplicationIsTickedInTheSettingsFile) {
    addApplication(phone, "Kettle");
    Drive drive(ctl);
    open(drive, {"Advanced Options", "Close All Apps"});

    const json ticked = drive.tap("Kettle");
    EXPECT_EQ(ticked.at("events"), together({written(), notified()}));
    EXPECT_EQ(rowLabelled(ticked, "Kettle").at("checked"), true);
    EXPECT_EQ(rowLabelled(ticked, "Kettle").at("identifier"), "example.named");
    EXPECT_EQ(drive.send({{"do", "get"}, {"key", "CloseAllAppsExceptions"}}).at("value"),
              (json{{"example.named", true}}));

    EXPECT_EQ(rowLabelled(drive.tap("Kettle"), "Kettle").at("checked"), false);
    EXPECT_EQ(drive.send({{"do", "get"}, {"key", "CloseAllAppsExceptions"}}).at("value"),
              (json{{"example.named", false}}));
}

// The repair is made when the first cell is produced, which is after the command and within its answer.
TEST_F(DrivePages, repairByProducingACellIsAmongTheAnswersEvents) {
    addApplication(phone, "Kettle");
    writeSettings(phone, settingsOf({{"CloseAllAppsExceptions", "<integer>3</integer>"}}));
    Drive drive(ctl);
    drive.tap("Advanced Options");
    const json answer = drive.tap("Close All Apps");
    EXPECT_EQ(
        answer.at("events"),
        together({{{"event", "push"}, {"class", "KavixPreferencesCloseAllAppsController"}}, written(), notified()}));
    EXPECT_EQ(rowLabelled(answer, "Kettle").at("checked"), false);
    EXPECT_EQ(drive.send({{"do", "get"}, {"key", "CloseAllAppsExceptions"}}).at("value"), json::object());
}

TEST_F(DrivePages, exceptionIsTickedInAFileOfItsOwn) {
    addApplication(phone, "Kettle");
    const std::string exceptions = "/var/mobile/Library/Preferences/com.fenwary.trivel3.exceptions.plist";
    Drive drive(ctl);
    open(drive, {"Advanced Options", "Disable in Applications"});
    const std::string settings = readSettings(phone);

    const json answer = drive.tap("Kettle");

    EXPECT_EQ(answer.at("events"),
              json::array({{{"event", "write"}, {"path", exceptions}, {"ok", true}},
                           {{"event", "notification"}, {"name", "com.fenwary.trivel3.exceptionsChanged"}}}));
    EXPECT_EQ(rowLabelled(answer, "Kettle").at("checked"), true);
    EXPECT_EQ(readText(phone.folder + exceptions), settingsOf({{"example.named", "<true/>"}}));
    EXPECT_EQ(readSettings(phone), settings);
}

TEST_F(DrivePages, applicationsIconIsToldWithoutAName) {
    Trivel3ctl sample;
    Drive drive(sample);
    const json answer = open(drive, {"Advanced Options", "Disable in Applications"});
    EXPECT_EQ(rowLabelled(answer, "Maps").at("icon"), true);
    EXPECT_EQ(rowLabelled(answer, "Maps").at("kind"), "item");
    EXPECT_EQ(rowLabelled(answer, "Kettle").at("icon"), false);
}

TEST_F(DrivePages, creatorsPageIsNoListOfRows) {
    Drive drive(ctl);
    const json page = drive.tap("The Creators");
    EXPECT_THAT(labelsOf(page), Contains("Follow Fenwary"));
    EXPECT_EQ(page.at("page").at("sections").size(), 3U);
    EXPECT_EQ(rowLabelled(page, "Follow Fenwary").at("icon"), "Logo");

    for (const json& command : {json{{"do", "reload"}}, json{{"do", "heart"}},
                                json{{"do", "switch"}, {"row", "Follow Fenwary"}, {"on", true}}}) {
        const json answer = drive.send(command);
        EXPECT_EQ(answer.at("ok"), false) << command;
        EXPECT_EQ(answer.at("events"), json::array()) << command;
    }
}

TEST_F(DrivePages, profilesAreAskedForInTheirOrder) {
    Drive drive(ctl, {"--can-open", "twitter"});
    drive.tap("The Creators");
    EXPECT_EQ(
        drive.tap({{"section", 1}, {"row", 0}}).at("events"),
        json::array({{{"event", "can-open-url"}, {"url", "tweetbot:///user_profile/MovaneX"}, {"answer", false}},
                     {{"event", "can-open-url"}, {"url", "twitter:///user?screen_name=MovaneX"}, {"answer", true}},
                     {{"event", "open-url"}, {"url", "twitter:///user?screen_name=MovaneX"}}}));
}

TEST_F(DrivePages, supportReportTellsOfThePhone) {
    Trivel3ctl sample;
    expectDone(sample.run({"set", "HotCorners", "off"}));
    Drive drive(sample);
    const json mail = eventsOf(drive.tap("Fenwary Support"), "present").at(0);
    const std::string report = mail.at("attachments").at(0).at("path");

    const Outcome outcome = sample.run({"plist", "convert", "json", report});

    expectDone(outcome);
    const json told = json::parse(outcome.output);
    EXPECT_EQ(told.size(), 8U);
    EXPECT_EQ(told.at("CPUArchitecture"), "arm64");
    EXPECT_EQ(told.at("Preferences"), (json{{"HotCorners", false}}));
    EXPECT_THAT(told.at("Packages").get<std::string>(), HasSubstr("Package: "));
}

}  // namespace
}  // namespace terminal_test
