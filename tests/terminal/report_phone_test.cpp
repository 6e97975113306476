// SPDX-License-Identifier: MIT
// A support report in a phone's place.
#include <gtest/gtest.h>

#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

struct CustomersReport : testing::Test {
    CustomersReport() {
        customer.usePhone(phone.folder);
        desk.set("TRIVEL3_PHONE", file);
    }

    // The customer's phone is gone once the report is made.
    void report(const std::string& model) {
        writeText(phone / "device-information.plist", settingsOf({{"ProductType", "<string>" + model + "</string>"},
                                                                  {"ProductVersion", "<string>8.4</string>"}}));
        expectDone(customer.run({"report", "-o", file}));
    }

    Phone phone;
    Trivel3ctl customer;
    Trivel3ctl desk;
    const std::string file = desk.folder() / "Trivel.plist";
};

struct Device {
    const char* model;
    const char* shape;
};

const std::vector<std::string> pages = {"",
                                        "Advanced Options",
                                        "Advanced Options/Quick Launcher",
                                        "Advanced Options/Slider Actions",
                                        "Advanced Options/Album Artwork",
                                        "Advanced Options/Close All Apps",
                                        "The Creators"};

TEST_F(CustomersReport, isShownAsTheCustomersDeviceShowsIt) {
    for (const Device device : {Device{"iPhone4,1", "phone-3.5"},
                                {"iPhone6,2", "phone-4"},
                                {"iPhone8,1", "phone-4.7"},
                                {"iPhone7,1", "phone-5.5"},
                                {"iPad4,1", "tablet"}}) {
        for (const bool hasSettings : {false, true}) {
            SCOPED_TRACE(std::string(device.shape) + (hasSettings ? " with settings" : ""));
            fs::remove(phone.settingsFile());
            if (hasSettings) {
                writeSettings(phone, settingsOf({{"HotCorners", "<false/>"},
                                                 {"MinimalControlCenterCondition", "<integer>6</integer>"},
                                                 {"OpenToLastApp", "<true/>"}}));
            }
            report(device.model);
            Drive there(customer, {"--device", device.shape});
            Drive here(desk);
            EXPECT_EQ(here.send({{"do", "view"}}), there.send({{"do", "view"}}));
            // With a remark on what it is.
            EXPECT_EQ(here.finish().status, 0);
            for (const std::string& page : pages) {
                const Outcome shown = desk.run({"show", page});
                const Outcome wanted = customer.run({"show", page, "--device", device.shape});
                EXPECT_EQ(shown.status, wanted.status) << page;
                EXPECT_EQ(shown.output, wanted.output) << page;
            }
        }
    }
}

TEST_F(CustomersReport, listsTickedApplicationsByTheirIdentifiers) {
    writeSettings(phone, settingsOf({{"CloseAllAppsExceptions", "<dict><key>com.example.kettle</key><true/></dict>"}}));
    report("iPhone6,1");
    const Outcome outcome = desk.run({"show", "Advanced Options/Close All Apps"});
    EXPECT_THAT(outcome.output, HasSubstr("com.example.kettle"));
    EXPECT_EQ(outcome.errors, "trivel3ctl: " + file +
                                  " is a support report: changes are tries that nobody is told of, and of applications "
                                  "it names those that are ticked alone\n");
}

TEST_F(CustomersReport, staysAsItIsWhateverIsTried) {
    report("iPhone6,1");
    const std::string before = readText(file);
    Drive drive(desk);
    drive.moveSwitch("Hot Corners", false);
    EXPECT_EQ(drive.send({{"do", "get"}, {"key", "HotCorners"}}).at("value"), false);
    EXPECT_EQ(drive.finish().status, 0);
    EXPECT_EQ(readText(file), before);
    EXPECT_FALSE(fs::exists(desk.folder() / "state/trivel3/history"));
    EXPECT_EQ(desk.run({"get", "HotCorners"}).output, "true\n");
}

TEST_F(CustomersReport, comesFromStandardInputToo) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    report("iPhone6,1");
    const std::string bytes = readText(file);
    EXPECT_EQ(desk.run({"--phone", "-", "get", "HotCorners"}, bytes).output, "false\n");
    EXPECT_EQ(desk.run({"--phone", "-", "diff"}, bytes).output, "HotCorners: true (default) -> false\n");
    expectFailure(desk.run({"--phone", "-", "drive"}, bytes), 2, "standard input is taken");
    expectFailure(desk.run({"--phone", "-"}, bytes), 2, "standard input is taken");
}

TEST_F(CustomersReport, isReadInXmlToo) {
    report("iPhone6,1");
    const std::string xml = desk.folder() / "xml.plist";
    writeText(xml, propertyList("<dict><key>Packages</key><string>p</string><key>Preferences</key><dict>"
                                "<key>HotCorners</key><false/></dict><key>ProductType</key><string>iPad2,1</string>"
                                "</dict>\n"));
    EXPECT_EQ(desk.run({"--phone", xml, "get", "HotCorners"}).output, "false\n");
}

TEST_F(CustomersReport, ofAnUnknownModelIsSaidToBeShownAsAnother) {
    report("iPhone99,1");
    EXPECT_THAT(desk.run({"show"}).errors, HasSubstr("the model iPhone99,1 is not known: it is shown as phone-4"));
    EXPECT_THAT(desk.run({"show", "--device", "tablet"}).errors, testing::Not(HasSubstr("not known")));
}

TEST_F(CustomersReport, isRefusedByWhatChangesAPhone) {
    report("iPhone6,1");
    const std::vector<Trivel3ctl::Arguments> commands = {{"set", "HotCorners", "off"},
                                                         {"unset", "--all"},
                                                         {"reset", "--all"},
                                                         {"apply", file},
                                                         {"history"},
                                                         {"undo"},
                                                         {"monitor"}};
    for (const Trivel3ctl::Arguments& command : commands)
        expectFailure(desk.run(command), 2, "this works on a phone's folder alone");
}

TEST_F(CustomersReport, settingsFileIsRefusedWithWhatTakesIt) {
    writeText(file, settingsOf({{"HotCorners", "<false/>"}}));
    expectFailure(desk.run({"show"}), 1, "a settings file can be compared by 'trivel3ctl diff', and taken over by");
}

TEST_F(CustomersReport, thatIsCutShowsNothingAndSaysWhy) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    report("iPhone6,1");
    const std::string whole = readText(file);
    for (std::size_t length = 0; length < whole.size(); length += whole.size() / 20 + 1) {
        writeText(file, whole.substr(0, length));
        expectFailure(desk.run({"show"}), 1, "it is no support report");
    }
}

}  // namespace
}  // namespace terminal_test
