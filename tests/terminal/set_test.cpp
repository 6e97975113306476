// SPDX-License-Identifier: MIT
#include <unistd.h>

#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

struct Set : testing::Test {
    Set() { ctl.usePhone(phone.folder); }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(Set, firstWriteMakesTheFileWithTheOneKey) {
    const Outcome outcome = ctl.run({"set", "HotCorners", "false"});
    expectDone(outcome);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
}

TEST_F(Set, otherKeysAreKept) {
    const std::string long_ago = "<date>2001-01-01T00:00:00Z</date>";
    writeSettings(phone, settingsOf({{"CloseAllAppsExceptions", "<dict><key>a.b</key><true/></dict>"},
                                     {"HotCorners", "<false/>"},
                                     {"Mine", long_ago}}));
    expectDone(ctl.run({"set", "HotCorners", "true"}));
    expectDone(ctl.run({"set", "SliderActionsVolume", "1"}));

    EXPECT_EQ(readSettings(phone),
              settingsOf({{"CloseAllAppsExceptions", "<dict>\n\t\t<key>a.b</key>\n\t\t<true/>\n\t</dict>"},
                          {"HotCorners", "<true/>"},
                          {"Mine", long_ago},
                          {"SliderActionsVolume", "<integer>1</integer>"}}));
}

TEST_F(Set, everySpellingOfABooleanIsTaken) {
    for (const char* word : {"true", "yes", "on", "1", "TRUE", "On"}) {
        expectDone(ctl.run({"set", "AccessHomeScreen", word}));
        EXPECT_EQ(readSettings(phone), settingsOf({{"AccessHomeScreen", "<true/>"}})) << word;
    }
    for (const char* word : {"false", "no", "off", "0", "False", "NO"}) {
        expectDone(ctl.run({"set", "AccessHomeScreen", word}));
        EXPECT_EQ(readSettings(phone), settingsOf({{"AccessHomeScreen", "<false/>"}})) << word;
    }
}

TEST_F(Set, integersAreDecimalOf64BitsWithASign) {
    const std::vector<std::pair<std::string, std::string>> numbers = {{"0", "0"},
                                                                      {"6", "6"},
                                                                      {"+6", "6"},
                                                                      {"007", "7"},
                                                                      {"-1", "-1"},
                                                                      {"9223372036854775807", "9223372036854775807"},
                                                                      {"-9223372036854775808", "-9223372036854775808"}};
    for (const auto& [typed, stored] : numbers) {
        expectDone(ctl.run({"set", "Mine", typed, "--type", "integer"}));
        EXPECT_EQ(readSettings(phone), settingsOf({{"Mine", "<integer>" + stored + "</integer>"}}));
    }
}

TEST_F(Set, severalKeysAreOneChange) {
    expectDone(ctl.run({"set", "HotCorners", "off", "SliderActionsVolume", "0", "MultiCenter", "off"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"},
                                               {"MultiCenter", "<false/>"},
                                               {"SliderActionsVolume", "<integer>0</integer>"}}));
    expectDone(ctl.run({"undo"}));
    EXPECT_EQ(ctl.run({"get", "HotCorners", "SliderActionsVolume", "MultiCenter"}).output, "true\n2\ntrue\n");
}

TEST_F(Set, ofSeveralKeysNoneIsSetWhereOneIsRefused) {
    expectFailure(ctl.run({"set", "HotCorners", "off", "MultiCenter", "maybe"}), 2, "'maybe' is no value");
    expectFailure(ctl.run({"set", "HotCorners", "off", "HotCorners", "on"}), 2, "'HotCorners' is there twice");
    expectFailure(ctl.run({"set", "HotCorners", "off", "MultiCenter"}), 2, "the last KEY lacks its VALUE");
    EXPECT_FALSE(fs::exists(phone.settingsFile()));
}

TEST_F(Set, choicesGoByTheirNamesInAnyCase) {
    expectDone(ctl.run({"set", "SliderActionsVolume", "set volume to MAXIMUM"}));
    EXPECT_EQ(ctl.run({"get", "SliderActionsVolume"}).output, "1\n");
    expectDone(ctl.run({"set", "MinimalControlCenterCondition", "If no Media is Playing + if airdrop is off"}));
    EXPECT_EQ(ctl.run({"get", "MinimalControlCenterCondition"}).output, "5\n");
    expectDone(ctl.run({"set", "MinimalControlCenterCondition", "Always"}));
    EXPECT_EQ(ctl.run({"get", "MinimalControlCenterCondition"}).output, "0\n");
}

TEST_F(Set, namesThatDoNotHoldTogetherAreRefused) {
    expectFailure(ctl.run({"set", "SliderActionsVolume", "Set Volume to Minimum+Set Volume to Maximum"}), 2,
                  "do not hold together");
    expectFailure(ctl.run({"set", "MinimalControlCenterCondition", "Always+Sometimes"}), 2,
                  "'Sometimes' is no choice of 'MinimalControlCenterCondition'");
    expectFailure(ctl.run({"set", "SliderActionsVolume", "Louder"}), 2, "1 (Set Volume to Maximum)");
    EXPECT_FALSE(fs::exists(phone.settingsFile()));
}

TEST_F(Set, numberThatNoRowStandsForIsSetAndWarnedOf) {
    const Outcome outcome = ctl.run({"set", "SliderActionsVolume", "7"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "trivel3ctl: 7 is no choice of 'SliderActionsVolume': 0, 1 or 2\n");
    EXPECT_EQ(ctl.run({"get", "SliderActionsVolume"}).output, "7\n");
    expectDone(ctl.run({"set", "MinimalControlCenterCondition", "7"}));
    EXPECT_THAT(ctl.run({"set", "MinimalControlCenterCondition", "8"}).errors, HasSubstr("or a sum of these"));
}

TEST_F(Set, whatXmlCannotSayIsRefused) {
    writeSettings(phone, settingsOf({{"Mine", "<true/>"}}));
    for (const char* text : {"a\x01"
                             "b",
                             "a\rb", "\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
        expectFailure(ctl.run({"set", "Text", text, "--type", "string"}), 2, "which no settings file can say");
        expectFailure(ctl.run({"set", text, "on", "--type", "boolean"}), 2, "which no settings file can say");
    }
    EXPECT_EQ(readSettings(phone), settingsOf({{"Mine", "<true/>"}}));
    expectDone(ctl.run({"set", "Text", "a\tb\nc", "--type", "string"}));
}

TEST_F(Set, keyOutsideTheCatalogueTakesTheTypeThatIsSaid) {
    expectDone(ctl.run({"set", "A", "on", "--type", "bool"}));
    expectDone(ctl.run({"set", "B", "12", "--type", "integer"}));
    expectDone(ctl.run({"set", "--type", "string", "C", "a <b>"}));
    expectDone(ctl.run({"set", "D", "", "--type", "string"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"A", "<true/>"},
                                               {"B", "<integer>12</integer>"},
                                               {"C", "<string>a &lt;b&gt;</string>"},
                                               {"D", "<string></string>"}}));
}

TEST_F(Set, keyWithoutADefaultIsABooleanUnlessSaid) {
    expectDone(ctl.run({"set", "OpenToLastAppWithQS", "on"}));
    EXPECT_EQ(ctl.run({"get", "OpenToLastAppWithQS"}).output, "true\n");
    expectFailure(ctl.run({"set", "OpenToLastAppWithQS", "2"}), 2, "true, false");
    expectDone(ctl.run({"set", "OpenToLastAppWithQS", "2", "--type", "int"}));
    EXPECT_EQ(ctl.run({"get", "OpenToLastAppWithQS"}).output, "2\n");
}

TEST_F(Set, unknownKeyWithoutATypeIsRefusedAndTheNearestNamed) {
    expectFailure(ctl.run({"set", "Multicenter", "true"}), 2, "did you mean 'MultiCenter'?");
    expectFailure(ctl.run({"set", "SliderActionVolume", "1"}), 2, "did you mean 'SliderActionsVolume'?");
    expectFailure(ctl.run({"set", "Mine", "1"}), 2, "--type boolean, integer or string");
    EXPECT_FALSE(fs::exists(phone.settingsFile()));
}

TEST_F(Set, valueThatIsNotOfTheKindIsRefused) {
    for (const char* value : {"maybe", "2", "", " true", "true "}) {
        expectFailure(ctl.run({"set", "MultiCenter", value}), 2,
                      "'MultiCenter', which takes true, false, yes, no, on, off, 1 or 0");
    }
    for (const char* value :
         {"", "x", "1.5", "0x1", "1 ", " 1", "+", "-", "+-1", "9223372036854775808", "-9223372036854775809"}) {
        expectFailure(ctl.run({"set", "AlbumArtworkAutoDisplay", value}), 2,
                      "'AlbumArtworkAutoDisplay', which takes one of these: ");
    }
    expectFailure(ctl.run({"set", "A", "x", "--type", "int"}), 2, "decimal integer");
    EXPECT_FALSE(fs::exists(phone.settingsFile()));
}

TEST_F(Set, typeThatIsNotTheKindIsRefused) {
    expectFailure(ctl.run({"set", "MultiCenter", "1", "--type", "int"}), 2, "'MultiCenter' takes true, false");
    expectDone(ctl.run({"set", "MultiCenter", "1", "--type", "bool"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"MultiCenter", "<true/>"}}));
}

TEST_F(Set, dictionaryIsRefused) {
    expectFailure(ctl.run({"set", "CloseAllAppsExceptions", "x"}), 2, "'CloseAllAppsExceptions' holds a dictionary");
    expectFailure(ctl.run({"set", "CloseAllAppsExceptions", "x", "--type", "string"}), 2, "holds a dictionary");
    EXPECT_FALSE(fs::exists(phone.settingsFile()));
}

TEST_F(Set, textThatIsNoUtf8IsRefused) {
    expectFailure(ctl.run({"set", "A", "\xFF", "--type", "string"}), 2, "UTF-8");
    expectFailure(ctl.run({"set", "\xC3", "x", "--type", "string"}), 2, "UTF-8");
    EXPECT_FALSE(fs::exists(phone.settingsFile()));
}

TEST_F(Set, permissionsOfTheFileAreKept) {
    writeSettings(phone, settingsOf({{"HotCorners", "<true/>"}}));
    fs::permissions(phone.settingsFile(), fs::perms::owner_all | fs::perms::group_read);
    expectDone(ctl.run({"set", "HotCorners", "off"}));
    EXPECT_EQ(fs::status(phone.settingsFile()).permissions(), fs::perms::owner_all | fs::perms::group_read);
}

TEST_F(Set, folderThatIsAFileMakesTheWriteFail) {
    writeText(phone.preferencesFolder(), "in the way");
    expectFailure(ctl.run({"set", "HotCorners", "off"}), 1, std::string("cannot write ") + settingsPath);
    EXPECT_EQ(readText(phone.preferencesFolder()), "in the way");
}

TEST_F(Set, folderInPlaceOfTheFileMakesTheWriteFail) {
    fs::create_directories(phone.settingsFile());
    expectFailure(ctl.run({"set", "HotCorners", "off"}), 1, "Is a directory");
    EXPECT_THAT(namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

TEST_F(Set, theValueThatStandsThereAlreadyReplacesNothingAndNeedsNoRoom) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    ctl.runThrough({"/bin/sh", "-c", "ulimit -f 0; exec \"$@\"", "sh"});
    const auto before = openPhone(phone.folder).look(settingsPath);
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 0);
    EXPECT_TRUE(openPhone(phone.folder).look(settingsPath)->isSameAs(*before));
    expectFailure(ctl.run({"set", "HotCorners", "on"}), 1, "cannot write");
}

// A limit on the length of files stands for a disk that is full.
TEST_F(Set, writeThatEndsHalfWayLeavesTheOldFileWhole) {
    std::vector<std::pair<std::string, std::string>> entries;
    for (int i = 100; i < 200; ++i)
        entries.emplace_back("Mine" + std::to_string(i), "<string>some text to fill the disk with</string>");
    const std::string old = settingsOf(entries);
    writeSettings(phone, old);
    ctl.runThrough({"/bin/sh", "-c", "ulimit -f 4; exec \"$@\"", "sh"});

    expectFailure(ctl.run({"set", "HotCorners", "off"}), 1, "File too large");

    EXPECT_EQ(readSettings(phone), old);
    EXPECT_THAT(namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

TEST_F(Set, fileThatHoldsWhatXmlCannotSayIsLeftAlone) {
    writeSettings(phone, settingsWithNull());
    expectFailure(ctl.run({"set", "HotCorners", "off"}), 1,
                  "holds null, which settings are not written with, so it was left as it is; move the file away");
    EXPECT_EQ(readSettings(phone), settingsWithNull());
}

// Rights that only the superuser has, and that would open every door, are laid down.
class WithoutPrivileges : public Set {
protected:
    void SetUp() override {
        if (::geteuid() != 0) return;
        ctl.runThrough({"/usr/bin/setpriv", "--bounding-set=-all", "--inh-caps=-all", "--"});
        if (!fs::exists("/usr/bin/setpriv") || ctl.run({"--version"}).status != 0) {
            GTEST_SKIP() << "this superuser cannot lay down its rights";
        }
    }
};

TEST_F(WithoutPrivileges, readOnlyFolderKeepsTheOldFile) {
    writeSettings(phone, settingsOf({{"HotCorners", "<true/>"}}));
    fs::permissions(phone.preferencesFolder(), fs::perms::owner_read | fs::perms::owner_exec);

    expectFailure(ctl.run({"set", "HotCorners", "off"}), 1, "Permission denied");

    fs::permissions(phone.preferencesFolder(), fs::perms::owner_all);
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<true/>"}}));
    EXPECT_THAT(namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

TEST_F(WithoutPrivileges, unreadableFileReadsAsNothingAndIsReplaced) {
    writeSettings(phone, settingsOf({{"MultiCenter", "<false/>"}}));
    fs::permissions(phone.settingsFile(), fs::perms::none);
    EXPECT_EQ(ctl.run({"get", "MultiCenter"}).output, "true\n");

    const Outcome outcome = ctl.run({"set", "HotCorners", "off"});
    EXPECT_EQ(outcome.status, 0);

    fs::permissions(phone.settingsFile(), fs::perms::owner_read);
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
    const auto names = namesIn(phone.preferencesFolder());
    ASSERT_EQ(names.size(), 2U);
    EXPECT_THAT(outcome.errors, testing::EndsWith("; what it was is now " + std::string(preferences).insert(0, "/") +
                                                  "/" + names[1] + "\n"));
    const std::string aside = phone.preferencesFolder() + "/" + names[1];
    fs::permissions(aside, fs::perms::owner_read);
    EXPECT_EQ(readText(aside), settingsOf({{"MultiCenter", "<false/>"}}));
}

}  // namespace
}  // namespace terminal_test
