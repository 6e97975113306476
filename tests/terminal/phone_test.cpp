// SPDX-License-Identifier: MIT
// What is told of a phone.
#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* identifier = "7c19e05f3ab2d4860f5e91c3d7a84b26e0f3951d";

struct ToldPhone : testing::Test {
    ToldPhone() { ctl.usePhone(phone.folder); }

    json told(const Trivel3ctl::Arguments& more = {}) const {
        Trivel3ctl::Arguments words{"phone", "--json"};
        words.insert(words.end(), more.begin(), more.end());
        return json::parse(ctl.run(words).output);
    }
    void writePackages(const std::string& text) const { writeText(phone / "var/lib/dpkg/status", text); }

    std::string report() const {
        const std::string file = ctl.folder() / "Trivel.plist";
        expectDone(ctl.run({"report", "-o", file}));
        return file;
    }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(ToldPhone, isTheSampleWhereNoneIsNamed) {
    ctl.unset("TRIVEL3_PHONE");
    const Outcome outcome = ctl.run({"phone"});
    expectDone(outcome);
    EXPECT_THAT(outcome.output, StartsWith("Kind: sample\n"
                                           "Address: " +
                                           fs::canonical(ctl.defaultPhone()).string() +
                                           "\n"
                                           "Name: Sample Phone\n"
                                           "Device: phone-4\n"
                                           "Model: iPhone7,2\n"
                                           "System: 8.1.2\n"
                                           "Add-on: 3.0.0\n"));
    EXPECT_THAT(outcome.output, HasSubstr("Confines look-ups: "));
}

TEST_F(ToldPhone, hasTheFilesOfThePaneWithTheirSizesAndTimes) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    const timespec firstOfMarch{1772323200, 0};
    const timespec times[] = {firstOfMarch, firstOfMarch};
    ASSERT_EQ(::utimensat(AT_FDCWD, phone.settingsFile().c_str(), times, 0), 0);
    const json expected = {
        {"path", settingsPath}, {"bytes", fs::file_size(phone.settingsFile())}, {"modified", "2026-03-01T00:00:00Z"}};
    const json facts = told();
    EXPECT_EQ(facts["files"], json::array({expected}));
    EXPECT_THAT(ctl.run({"phone"}).output, HasSubstr("File: " + std::string(settingsPath) + ", " +
                                                     expected["bytes"].dump() + " bytes, 2026-03-01T00:00:00Z\n"));
    EXPECT_EQ(facts["kind"], "folder");
    EXPECT_EQ(facts["address"], fs::canonical(phone.folder).string());
    EXPECT_EQ(facts["roundTripMs"], json());
    EXPECT_EQ(facts["promises"]["keepsChanges"], true);
    EXPECT_FALSE(facts.contains("report"));
}

TEST_F(ToldPhone, withoutAnswersSaysSo) {
    const json facts = told({"--device", "tablet"});
    for (const char* field : {"model", "system", "addon"})
        EXPECT_EQ(facts[field], json()) << field;
    EXPECT_EQ(facts["device"], "tablet");
    EXPECT_EQ(facts["name"], "phone");
    EXPECT_THAT(ctl.run({"phone"}).output, HasSubstr("Model: (not told)\nSystem: (not told)\nAdd-on: (not told)\n"));
}

TEST_F(ToldPhone, addOnsVersionIsThatOfItsInstalledPackage) {
    struct Case {
        std::string database;
        json version;
    };
    const std::string ours = "Package: com.fenwary.trivel3\n";
    for (const Case& each :
         std::vector<Case>{{ours + "Status: install ok installed\nVersion: 3.0.0-2\n", "3.0.0-2"},
                           {"Package: com.fenwary.trivel3extras\nStatus: install ok installed\nVersion: 1\n\n" + ours +
                                "status: install ok installed\nDescription: x\n Version: 9\nversion:  2.1 \n",
                            "2.1"},
                           {ours + "Status: deinstall ok config-files\nVersion: 3.0.0\n", json()},
                           {ours + "Status: install ok not-installed\nVersion: 3.0.0\n", json()},
                           {ours + "\nVersion: 3.0.0\n", json()},
                           {"", json()},
                           {"\n\n\n", json()},
                           {ours + "Status: install ok installed\r\nVersion: \x1b[31m3\r\n", "\x1b[31m3"}}) {
        SCOPED_TRACE(each.database);
        writePackages(each.database);
        EXPECT_EQ(told()["addon"], each.version);
    }
    EXPECT_THAT(ctl.run({"phone"}).output, Not(HasSubstr("\x1b")));
}

TEST_F(ToldPhone, ofAReportHasItsEightEntriesAndNothingPrivate) {
    writeText(phone / "device-information.plist",
              settingsOf({{"ProductType", "<string>iPhone8,1</string>"},
                          {"UniqueDeviceID", "<string>" + std::string(identifier) + "</string>"}}));
    writePackages("Package: com.fenwary.trivel3\nStatus: install ok installed\nVersion: 3.0.0\n\nPackage: secret\n");
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    ctl.set("TRIVEL3_PHONE", report());
    const Outcome outcome = ctl.run({"phone"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("Device: phone-4.7\nModel: iPhone8,1\nSystem: (not told)\nAdd-on: 3.0.0\n"));
    EXPECT_THAT(outcome.output, HasSubstr("Changes: tries, which are gone when the program ends\n"
                                          "Report:\n"
                                          "  UniqueDeviceID: (masked)\n"
                                          "  ProductVersion: null\n"
                                          "  ProductType: iPhone8,1\n"
                                          "  DiskUsage: (5 entries)\n"
                                          "  DeviceColor: null\n"
                                          "  CPUArchitecture: null\n"
                                          "  Packages: 90 bytes\n"
                                          "  Preferences: 1 setting\n"));
    for (const Outcome& each : {outcome, ctl.run({"phone", "--json"})}) {
        EXPECT_THAT(each.output, Not(HasSubstr(identifier)));
        EXPECT_THAT(each.output, Not(HasSubstr("secret")));
    }
    EXPECT_THAT(ctl.run({"phone", "--identifiers"}).output, HasSubstr(std::string("UniqueDeviceID: ") + identifier));
    const json facts = told({"--identifiers"});
    EXPECT_EQ(facts["kind"], "report");
    EXPECT_EQ(facts["files"], json::array());
    EXPECT_EQ(facts["promises"]["keepsChanges"], false);
    EXPECT_EQ(facts["report"].size(), 8);
    EXPECT_EQ(facts["report"]["UniqueDeviceID"], identifier);
    EXPECT_EQ(facts["report"]["DeviceColor"], json());
    EXPECT_EQ(facts["report"]["Preferences"], 1);
}

TEST_F(ToldPhone, reportOfAnEmptyPhoneNamesWhatIsNull) {
    ctl.set("TRIVEL3_PHONE", report());
    EXPECT_THAT(ctl.run({"phone"}).output, HasSubstr("  Packages: null\n  Preferences: null\n"));
}

}  // namespace
}  // namespace terminal_test
