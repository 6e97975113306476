// SPDX-License-Identifier: MIT
#include <sstream>

#include "tests/kit/expectations.h"
#include "tests/kit/page_tables.h"
#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::ElementsAreArray;
using testing::HasSubstr;

json entry(const std::string& key, const platform::Value& standard) {
    json shown = json::object();
    if (const bool* truth = standard.boolean()) shown = *truth;
    if (standard.integer()) shown = platform::integerValue(standard);
    const char* kind = shown.is_boolean() ? "boolean" : shown.is_object() ? "dictionary" : "integer";
    return {{"key", key}, {"kind", kind}, {"value", shown}, {"default", shown}, {"stored", false}};
}

// The settings with a default, in their order, and the one without after them.
json untouchedSettings() {
    json all = json::array();
    for (const kit::ExpectedSetting& setting : kit::expectedSettings())
        all.push_back(entry(setting.key, setting.defaultValue));
    all.push_back({{"key", kit::settingWithoutDefault},
                   {"kind", "boolean"},
                   {"value", nullptr},
                   {"default", nullptr},
                   {"stored", false}});
    return all;
}

struct Settings : testing::Test {
    Settings() { ctl.usePhone(phone.folder); }

    Trivel3ctl ctl;
    Phone phone;
};

using List = Settings;
using Reset = Settings;

TEST_F(List, everySettingIsThereInCatalogueOrder) {
    EXPECT_EQ(ctl.runForJson({"list", "--json"}), untouchedSettings());
}

TEST_F(List, storedValuesAreToldAsSuchEvenWhenTheyEqualTheDefault) {
    writeSettings(phone, settingsOf({{"AlbumArtworkAutoDisplay", "<string>five</string>"},
                                     {"CloseAllAppsExceptions", "<dict><key>a</key><true/></dict>"},
                                     {"Mine", "<true/>"},
                                     {"MultiCenter", "<true/>"},
                                     {"OpenToLastAppWithQS", "<false/>"}}));
    json expected = untouchedSettings();
    expected[13]["value"] = "five";
    expected[18]["value"] = {{"a", true}};
    expected[26]["value"] = false;
    for (const int position : {0, 13, 18, 26})
        expected[static_cast<std::size_t>(position)]["stored"] = true;
    // What the pane does not know comes last.
    expected.push_back({{"key", "Mine"}, {"kind", nullptr}, {"value", true}, {"default", nullptr}, {"stored", true}});

    EXPECT_EQ(ctl.runForJson({"list", "--json"}), expected);
}

TEST_F(List, namesTheSettingsThatAreAskedFor) {
    writeSettings(phone, settingsOf({{"Mine", "<true/>"}}));
    const Outcome outcome = ctl.run({"list", "Mine", "HotCorners"});
    expectDone(outcome);
    EXPECT_EQ(outcome.output,
              "Mine        true        stored  (not a setting of the pane)\nHotCorners  true        default\n");
    expectFailure(ctl.run({"list", "HotCorner"}), 1, "did you mean 'HotCorners'?");
}

TEST_F(Reset, storedKeyThatThePaneDoesNotKnowIsToldWhatRemovesIt) {
    writeSettings(phone, settingsOf({{"Mine", "<true/>"}}));
    expectFailure(ctl.run({"reset", "Mine"}), 2, "'trivel3ctl unset' removes it");
}

TEST_F(List, textHasALineForEach) {
    writeSettings(phone, settingsOf({{"CloseAllAppsExceptions", "<dict><key>a</key><true/></dict>"},
                                     {"HotCorners", "<false/>"}}));
    const Outcome outcome = ctl.run({"list"});
    expectDone(outcome);
    EXPECT_THAT(outcome.output, HasSubstr("MultiCenter                    true        default\n"));
    EXPECT_THAT(outcome.output, HasSubstr("HotCorners                     false       stored\n"));
    EXPECT_THAT(outcome.output, HasSubstr("CloseAllAppsExceptions         (1 entry)   stored\n"));
    EXPECT_THAT(outcome.output, HasSubstr("AlbumArtworkAutoDisplay        6           default\n"));
    EXPECT_THAT(outcome.output, HasSubstr("OpenToLastAppWithQS            (nothing)   default\n"));

    std::vector<std::string> keys;
    std::istringstream lines(outcome.output);
    for (std::string line; std::getline(lines, line);)
        keys.push_back(line.substr(0, line.find(' ')));
    std::vector<std::string> expected;
    for (const json& setting : untouchedSettings())
        expected.push_back(setting.at("key"));
    EXPECT_THAT(keys, ElementsAreArray(expected));
}

TEST_F(List, realNumbersAreToldAsShortAsCanBe) {
    writeSettings(phone, settingsOf({{"HotCorners", "<real>0.1</real>"}}));
    EXPECT_THAT(ctl.run({"list"}).output, HasSubstr("HotCorners                     0.1         stored\n"));
}

TEST_F(List, longValuesAreCutInTextAndWholeInJson) {
    const std::string text(1000, 'x');
    writeSettings(phone, settingsOf({{"HotCorners", "<string>" + text + "</string>"}}));
    EXPECT_THAT(ctl.run({"list"}).output,
                HasSubstr("HotCorners                     " + text.substr(0, 59) + "… stored\n"));
    EXPECT_EQ(ctl.runForJson({"list", "--json"}).at(2).at("value"), text);
}

TEST_F(Reset, namedKeysThatTheFileHoldsGoBackToTheirDefaults) {
    writeSettings(phone, settingsOf({{"AlbumArtworkAutoDisplay", "<integer>1</integer>"},
                                     {"HotCorners", "<false/>"},
                                     {"MultiCenter", "<false/>"}}));
    const Outcome outcome = ctl.run({"reset", "MultiCenter", "AlbumArtworkAutoDisplay", "QuickSwitcher"});
    expectDone(outcome);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(readSettings(phone), settingsOf({{"AlbumArtworkAutoDisplay", "<integer>6</integer>"},
                                               {"HotCorners", "<false/>"},
                                               {"MultiCenter", "<true/>"}}));
}

TEST_F(Reset, allLeavesOtherKeysAndTheKeyWithoutADefaultAlone) {
    writeSettings(phone, settingsOf({{"CloseAllAppsExceptions", "<dict><key>a</key><true/></dict>"},
                                     {"HotCorners", "<false/>"},
                                     {"Mine", "<true/>"},
                                     {"OpenToLastAppWithQS", "<true/>"}}));
    expectDone(ctl.run({"reset", "--all"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"CloseAllAppsExceptions", "<dict/>"},
                                               {"HotCorners", "<true/>"},
                                               {"Mine", "<true/>"},
                                               {"OpenToLastAppWithQS", "<true/>"}}));
}

TEST_F(Reset, nothingIsWrittenWhereNothingIsStored) {
    expectDone(ctl.run({"reset", "--all"}));
    expectDone(ctl.run({"reset", "HotCorners"}));
    EXPECT_TRUE(fs::is_empty(phone / "var"));
}

TEST_F(Reset, oneWrongKeyKeepsAllFromBeingReset) {
    const std::string old = settingsOf({{"HotCorners", "<false/>"}});
    writeSettings(phone, old);
    expectFailure(ctl.run({"reset", "HotCorners", "Hotcorner"}), 2, "did you mean 'HotCorners'?");
    expectFailure(ctl.run({"reset", "HotCorners", "OpenToLastAppWithQS"}), 2, "has no default to go back to");
    EXPECT_EQ(readSettings(phone), old);
}

TEST_F(Reset, failedWriteIsAFailure) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    ctl.runThrough({"/bin/sh", "-c", "ulimit -f 0; exec \"$@\"", "sh"});
    expectFailure(ctl.run({"reset", "--all"}), 1, "cannot write");
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
}

}  // namespace
}  // namespace terminal_test
