// SPDX-License-Identifier: MIT
// Settings that travel: export, apply, diff and unset.
#include <random>

#include "platform/foundation/property_list.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

#include "drive.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* exceptionsPath = "/var/mobile/Library/Preferences/com.fenwary.trivel3.exceptions.plist";

struct Travel : testing::Test {
    Travel() { ctl.usePhone(phone.folder); }

    std::string exceptionsFile() const { return phone.folder + exceptionsPath; }
    std::string write(const std::string& name, const std::string& contents) const {
        const std::string path = ctl.folder() / name;
        writeText(path, contents);
        return path;
    }

    Trivel3ctl ctl;
    Phone phone;
};

using Export = Travel;
using Apply = Travel;
using Diff = Travel;
using Report = Travel;
using Unset = Travel;

std::string exportOf(const std::string& settings, const std::string& exceptions) {
    return propertyList("<dict>\n" + (exceptions.empty() ? "" : "\t<key>Exceptions</key>\n\t" + exceptions + "\n") +
                        "\t<key>FormatVersion</key>\n\t<integer>1</integer>\n" +
                        (settings.empty() ? "" : "\t<key>Settings</key>\n\t" + settings + "\n") + "</dict>\n");
}

TEST_F(Export, holdsWhatIsStoredAndNothingElse) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<string>x</string>"}}));
    writeText(exceptionsFile(), settingsOf({{"example.kettle", "<true/>"}}));
    EXPECT_EQ(
        ctl.run({"export"}).output,
        exportOf(
            "<dict>\n\t\t<key>HotCorners</key>\n\t\t<false/>\n\t\t<key>Mine</key>\n\t\t<string>x</string>\n\t</dict>",
            "<dict>\n\t\t<key>example.kettle</key>\n\t\t<true/>\n\t</dict>"));
}

TEST_F(Export, fileThatIsNotThereIsAKeyThatIsNotThere) {
    EXPECT_EQ(ctl.run({"export"}).output, exportOf("", ""));
    writeSettings(phone, settingsOf({}));
    EXPECT_EQ(ctl.run({"export"}).output, exportOf("<dict/>", ""));
}

TEST_F(Export, fileThatCannotBeReadIsAFailure) {
    writeSettings(phone, "no property list");
    expectFailure(ctl.run({"export"}), 1, "cannot read");
    fs::remove(phone.settingsFile());
    writeText(exceptionsFile(), propertyList("<array/>\n"));
    expectFailure(ctl.run({"export"}), 1, "its root is no dictionary");
}

TEST_F(Export, whatXmlCannotSayIsAFailure) {
    writeSettings(phone, settingsWithNull());
    expectFailure(ctl.run({"export"}), 1, "null");
}

TEST_F(Export, goesIntoAFileWholeOrNotAtAll) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    const std::string file = ctl.folder() / "export.plist";
    expectDone(ctl.run({"export", "-o", file}));
    EXPECT_EQ(readText(file), ctl.run({"export"}).output);
    expectFailure(ctl.run({"export", "-o", ctl.folder() / "missing/export.plist"}), 1, "missing");
}

// Any value of a settings file's, the pane's own and others.
class RandomSettings {
public:
    explicit RandomSettings(unsigned seed) : _random(seed) {}

    std::string file() {
        std::string entries;
        const unsigned count = below(8);
        for (unsigned entry = 0; entry < count; ++entry)
            entries += "\t<key>" + key() + std::to_string(entry) + "</key>\n\t" + value(2) + "\n";
        return propertyList("<dict>\n" + entries + "\t<key>HotCorners</key>\n\t" + value(1) + "\n</dict>\n");
    }

private:
    unsigned below(unsigned bound) { return std::uniform_int_distribution<unsigned>(0, bound - 1)(_random); }
    std::string key() { return below(2) == 0 ? "MultiCenter" : "ключ 🔑"; }
    std::string value(unsigned depth) {
        switch (below(depth > 0 ? 8 : 6)) {
            case 0:
                return "<true/>";
            case 1:
                return "<integer>-" + std::to_string(below(1000) + 1) + "</integer>";
            case 2:
                return "<real>0.5</real>";
            case 3:
                return "<string>a &lt; b\n\tc</string>";
            case 4:
                return "<date>2001-01-01T00:00:00Z</date>";
            case 5:
                return "<data>AAEC</data>";
            case 6:
                return "<array>" + value(depth - 1) + value(depth - 1) + "</array>";
            default:
                return "<dict><key>" + key() + "</key>" + value(depth - 1) + "</dict>";
        }
    }

    std::mt19937 _random;
};

TEST_F(Export, thatIsAppliedElsewhereIsExportedThereAsTheSameBytes) {
    const Phone other;
    Trivel3ctl there;
    there.usePhone(other.folder);
    const std::string file = ctl.folder() / "export.plist";
    for (unsigned seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE(seed);
        RandomSettings random(seed);
        writeSettings(phone, random.file());
        if (seed % 2 == 0) writeText(exceptionsFile(), random.file());
        expectDone(ctl.run({"export", "-o", file}));
        EXPECT_EQ(there.run({"apply", "--exact", file}).status, 0);
        EXPECT_EQ(there.run({"export"}).output, readText(file));
        EXPECT_EQ(there.run({"apply", "--exact", file}).output, "");
        EXPECT_EQ(ctl.run({"diff", phone.folder, other.folder}).output, "");
    }
}

TEST_F(Apply, leavesAloneWhatTheFileLacks) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}}));
    const std::string file = write("settings.plist", settingsOf({{"MultiCenter", "<false/>"}}));
    const Outcome outcome = ctl.run({"apply", file});
    expectDone(outcome);
    EXPECT_EQ(outcome.output, "MultiCenter: true (default) -> false\n");
    EXPECT_EQ(readSettings(phone),
              settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}, {"MultiCenter", "<false/>"}}));
}

TEST_F(Apply, removesWhatTheFileLacksOnlyToBeExact) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}}));
    writeText(exceptionsFile(), settingsOf({{"example.kettle", "<true/>"}}));
    const std::string file = write("settings.plist", settingsOf({{"MultiCenter", "<false/>"}}));
    expectDone(ctl.run({"apply", "--exact", file}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"MultiCenter", "<false/>"}}));
    // A settings file cannot tell of exceptions, and says nothing against them.
    EXPECT_EQ(readText(exceptionsFile()), settingsOf({{"example.kettle", "<true/>"}}));
    expectDone(ctl.run({"apply", "--exact", write("export.plist", exportOf("", "<dict/>"))}));
    EXPECT_EQ(ctl.run({"export"}).output, exportOf("<dict/>", "<dict/>"));
}

TEST_F(Apply, touchesTheNamedKeysOnly) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}}));
    const std::string file =
        write("export.plist", exportOf("<dict><key>HotCorners</key><true/><key>MultiCenter</key><false/></dict>",
                                       "<dict><key>example.kettle</key><true/></dict>"));
    expectDone(ctl.run({"apply", file, "--exact", "--only", "Mine", "MultiCenter"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}, {"MultiCenter", "<false/>"}}));
    EXPECT_FALSE(fs::exists(exceptionsFile()));
    expectFailure(ctl.run({"apply", file, "--only", "MultiCentre"}), 2, "did you mean 'MultiCenter'?");
}

TEST_F(Apply, dryRunPrintsTheSameAndChangesNothing) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    const std::string file = write("export.plist", exportOf("<dict><key>HotCorners</key><true/></dict>",
                                                            "<dict><key>example.kettle</key><true/></dict>"));
    const Outcome dry = ctl.run({"apply", "--dry-run", file});
    expectDone(dry);
    EXPECT_EQ(dry.output, "HotCorners: false -> true\nExceptions:\n  example.kettle: (nothing) -> true\n");
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_EQ(ctl.run({"apply", file}).output, dry.output);
    EXPECT_EQ(readText(exceptionsFile()), settingsOf({{"example.kettle", "<true/>"}}));
}

TEST_F(Apply, isOneTurnThatCanBeUndone) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}}));
    const std::string before = ctl.run({"export"}).output;
    const std::string file = write(
        "export.plist", exportOf("<dict><key>A</key><true/></dict>", "<dict><key>example.kettle</key><true/></dict>"));
    expectDone(ctl.run({"apply", "--exact", file}));
    expectDone(ctl.run({"undo"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}}));
    EXPECT_EQ(ctl.run({"diff", phone.folder, write("before.plist", before)}).output, "");
}

TEST_F(Apply, takesWhatListPrints) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"},
                                     {"CloseAllAppsExceptions", "<dict><key>a</key><true/></dict>"},
                                     {"Mine", "<integer>5</integer>"}}));
    const std::string list = ctl.run({"list", "--json"}).output;
    const Phone other;
    Trivel3ctl there;
    there.usePhone(other.folder);
    EXPECT_EQ(there.run({"apply", "-"}, list).status, 0);
    EXPECT_EQ(there.run({"export"}).output, ctl.run({"export"}).output);
}

TEST_F(Apply, takesFromAListWhatJsonCannotSay) {
    const std::string settings = settingsOf({{"Array", "<array>\n\t\t<data>\n\t\tAAE=\n\t\t</data>\n\t</array>"},
                                             {"Data", "<data>\n\tAAE=\n\t</data>"},
                                             {"Date", "<date>2014-12-25T10:00:00Z</date>"},
                                             {"Text", "<string>2014-12-25T10:00:00Z</string>"}});
    writeSettings(phone, settings);
    const json listed = ctl.runForJson({"list", "Date", "Text", "--json"});
    EXPECT_THAT(listed[0]["plist"].get<std::string>(), HasSubstr("<date>2014-12-25T10:00:00Z</date>"));
    EXPECT_FALSE(listed[1].contains("plist"));
    const std::string list = write("list", ctl.run({"list", "--json"}).output);
    EXPECT_EQ(ctl.run({"diff", list, phone.folder}).output, "");
    const Phone other;
    ctl.usePhone(other.folder);
    EXPECT_EQ(ctl.run({"apply", list}).status, 0);
    EXPECT_EQ(ctl.run({"diff", phone.folder, other.folder}).output, "");
    EXPECT_EQ(ctl.run({"get", "Date", "Data"}).output.find("<string>"), std::string::npos);
}

TEST_F(Apply, refusesAListOfWhatNobodyCanSay) {
    const json damaged = {{{"key", "Mine"}, {"kind", nullptr}, {"value", "x"}, {"plist", nullptr}, {"stored", true}}};
    const std::string list = write("list", damaged.dump());
    expectFailure(ctl.run({"apply", list}), 1, "'Mine' holds what a list cannot say");
}

TEST_F(Apply, takesASupportReportInEitherEncoding) {
    const std::string report =
        write("Trivel.plist", propertyList("<dict><key>Packages</key><string>p</string><key>Preferences</key><dict>"
                                           "<key>HotCorners</key><false/></dict><key>ProductType</key>"
                                           "<string>iPhone6,1</string></dict>\n"));
    const std::string binary = ctl.folder() / "binary.plist";
    expectDone(ctl.run({"plist", "convert", "binary1", report, "-o", binary}));
    expectDone(ctl.run({"apply", binary}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_EQ(ctl.run({"apply", report}).output, "");
}

TEST_F(Apply, valueOfAnotherKindIsAppliedAndWarnedOf) {
    const Outcome outcome = ctl.run({"apply", write("f", settingsOf({{"HotCorners", "<integer>1</integer>"}}))});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "HotCorners: true (default) -> 1\n");
    EXPECT_THAT(outcome.errors, HasSubstr("'HotCorners' is of another kind than the pane's, which takes a boolean"));
}

TEST_F(Apply, whatCannotBeAppliedWholeIsNotApplied) {
    const std::vector<std::pair<std::string, std::string>> files = {
        {"no property list", "cannot read"},
        {propertyList("<array/>\n"), "its root is no dictionary"},
        {"[1]", "neither a property list nor what 'trivel3ctl list --json' prints"},
        {"[[[[", "neither a property list nor what"},
        {exportOf("<string>x</string>", ""), "Settings is no dictionary"},
        {propertyList("<dict><key>FormatVersion</key><integer>2</integer></dict>\n"), "another version"}};
    for (const auto& [contents, reason] : files)
        expectFailure(ctl.run({"apply", write("file", contents)}), 1, reason);
    expectFailure(ctl.run({"apply", write("file", settingsOf({{"Mine", "<string>a\x01</string>"}}))}), 2, "U+0001");
    expectFailure(ctl.run({"apply", write("file", settingsWithNull())}), 2, "null");
    expectFailure(ctl.run({"apply", ctl.folder() / "missing"}), 1, "missing");
    EXPECT_FALSE(fs::exists(phone.settingsFile()));
}

TEST_F(Apply, phoneWhoseFileCannotBeReadIsLeftAsItIs) {
    writeSettings(phone, "no property list");
    expectFailure(ctl.run({"apply", write("file", settingsOf({{"HotCorners", "<false/>"}}))}), 1, "cannot read");
    EXPECT_EQ(readSettings(phone), "no property list");
}

TEST_F(Report, isWhatTheSupportRowAttaches) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    Drive drive(ctl);
    const json mail = eventsOf(drive.tap("Fenwary Support"), "present").at(0);
    const std::string attached = readText(mail.at("attachments").at(0).at("path").get<std::string>());
    // How full a disk is may differ from one moment to the next.
    const auto withoutDisk = [](const std::string& report) {
        const auto reading = platform::readPropertyList(report);
        platform::Dictionary told = *reading.value->dictionary();
        told.remove("DiskUsage");
        return platform::Value(told);
    };
    const Outcome outcome = ctl.run({"report"});
    expectDone(outcome);
    EXPECT_EQ(withoutDisk(outcome.output), withoutDisk(attached));
    EXPECT_EQ(ctl.run({"diff", "-"}, outcome.output).output, "HotCorners: true (default) -> false\n");
}

TEST_F(Report, goesIntoAFileForItsUserAlone) {
    const std::string file = ctl.folder() / "report.plist";
    expectDone(ctl.run({"report", "-o", file}));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_THAT(readText(file), StartsWith("bplist00"));
}

TEST_F(Report, takesTheAnswersThatTheUserNames) {
    const std::string answers = write("answers.plist", settingsOf({{"DeviceColor", "<string>teal</string>"}}));
    EXPECT_THAT(ctl.run({"report", "--device-information", answers}).output, HasSubstr("teal"));
    for (const char* command : {"report", "export", "show", "list"}) {
        expectFailure(ctl.run({command, "--device-information", ctl.folder() / "missing"}), 1, "missing");
    }
}

TEST_F(Diff, absentKeyEqualsItsDefault) {
    writeSettings(phone, settingsOf({{"HotCorners", "<true/>"}, {"SliderActionsVolume", "<integer>2</integer>"}}));
    const Outcome outcome = ctl.run({"diff"});
    expectDone(outcome);
    EXPECT_EQ(outcome.output, "");
}

TEST_F(Diff, kindsCount) {
    writeSettings(phone, settingsOf({{"HotCorners", "<integer>1</integer>"}}));
    EXPECT_EQ(ctl.run({"diff"}).output, "HotCorners: true (default) -> 1\n");
}

TEST_F(Diff, tellsDictionariesEntryByEntryAndMarksUnknownKeys) {
    const std::string left = write("left", exportOf("<dict><key>CloseAllAppsExceptions</key><dict><key>a</key><true/>"
                                                    "<key>b</key><true/></dict></dict>",
                                                    "<dict/>"));
    const std::string right =
        write("right", exportOf("<dict><key>CloseAllAppsExceptions</key><dict><key>b</key><true/></dict>"
                                "<key>Mine</key><true/></dict>",
                                "<dict><key>example.kettle</key><true/></dict>"));
    EXPECT_EQ(ctl.run({"diff", left, right}).output,
              "CloseAllAppsExceptions: (2 entries) -> (1 entry)\n"
              "  a: true -> (nothing)\n"
              "Mine: (nothing) -> true  (not a setting of the pane)\n"
              "Exceptions:\n"
              "  example.kettle: (nothing) -> true\n");
}

TEST_F(Diff, saysWhichSideCannotTellOfExceptions) {
    writeText(exceptionsFile(), settingsOf({{"example.kettle", "<true/>"}}));
    const std::string file = write("settings.plist", settingsOf({}));
    const Outcome outcome = ctl.run({"diff", phone.folder, file});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors, HasSubstr("settings.plist cannot tell which applications are exceptions"));
}

TEST_F(Diff, saysThatAReportInThePhonesPlaceCannotTellOfExceptions) {
    const std::string report = ctl.folder() / "Trivel.plist";
    expectDone(ctl.run({"report", "-o", report}));
    const Outcome outcome = ctl.run({"--phone", report, "diff"});
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors, HasSubstr(report + " cannot tell which applications are exceptions"));
}

TEST_F(Diff, endsWith3WhereThatIsAskedAndThereIsADifference) {
    EXPECT_EQ(ctl.run({"diff", "--exit-code"}).status, 0);
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_EQ(ctl.run({"diff", "--exit-code"}).status, 3);
    EXPECT_EQ(ctl.run({"diff"}).status, 0);
    EXPECT_EQ(ctl.run({"diff", "--exit-code", phone.folder, phone.folder}).status, 0);
}

TEST_F(Diff, jsonTellsWhatIsStored) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    EXPECT_EQ(ctl.runForJson({"diff", "--json"}), json::array({{{"file", settingsPath},
                                                                {"key", "HotCorners"},
                                                                {"old", true},
                                                                {"new", false},
                                                                {"oldStored", false},
                                                                {"newStored", true}}}));
}

TEST_F(Diff, fileOrPhoneThatCannotBeReadIsAFailure) {
    writeSettings(phone, "no property list");
    expectFailure(ctl.run({"diff"}), 1, "cannot read");
    expectFailure(ctl.run({"diff", ctl.folder() / "missing"}), 1, "missing");
}

TEST_F(Diff, makesNoPhone) {
    Trivel3ctl fresh;
    EXPECT_EQ(fresh.run({"diff", write("file", settingsOf({{"HotCorners", "<false/>"}}))}).output,
              "HotCorners: true (default) -> false\n");
    EXPECT_FALSE(fs::exists(fresh.defaultPhone()));
}

TEST_F(Unset, removesStoredKeysKnownOrNot) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}, {"MultiCenter", "<false/>"}}));
    expectDone(ctl.run({"unset", "HotCorners", "Mine"}));
    EXPECT_EQ(readSettings(phone), settingsOf({{"MultiCenter", "<false/>"}}));
    expectDone(ctl.run({"undo"}));
    EXPECT_EQ(ctl.run({"get", "HotCorners", "Mine"}).output, "false\ntrue\n");
    expectDone(ctl.run({"unset", "--all"}));
    EXPECT_EQ(readSettings(phone), propertyList("<dict/>\n"));
}

TEST_F(Unset, keyThatIsNotStoredIsNoWrite) {
    expectDone(ctl.run({"unset", "HotCorners"}));
    expectDone(ctl.run({"unset", "--all"}));
    EXPECT_FALSE(fs::exists(phone.settingsFile()));
    expectFailure(ctl.run({"unset", "HotCorner"}), 2, "did you mean 'HotCorners'?");
}

TEST_F(Unset, fileThatCannotBeReadIsLeftAsItIs) {
    writeSettings(phone, "no property list");
    expectFailure(ctl.run({"unset", "--all"}), 1, "cannot read");
    EXPECT_EQ(readSettings(phone), "no property list");
}

}  // namespace
}  // namespace terminal_test
