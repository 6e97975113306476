// SPDX-License-Identifier: MIT
// A support report in a phone's place, by itself and in an e-mail.
#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <span>
#include <tuple>

#include "drive.h"
#include "platform/foundation/base64.h"
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

// A page that the device lacks is refused.
std::pair<int, std::string> show(const Trivel3ctl& program, const std::string& page, bool isJson,
                                 Trivel3ctl::Arguments more = {}) {
    more.insert(more.begin(), {"show", page});
    if (isJson) more.emplace_back("--json");
    const Outcome outcome = program.run(more);
    return {outcome.status, outcome.output};
}

// Of every page, with the rows in it, whichever are greyed.
json viewsOf(const Trivel3ctl& program, const Trivel3ctl::Arguments& options) {
    Drive drive(program, options);
    json views = {drive.send({{"do", "view"}})};
    const auto visit = [&drive, &views](const char* row) {
        views.push_back(drive.tap(row));
        views.push_back(drive.send({{"do", "view"}}));
    };
    visit("Advanced Options");
    for (const char* link :
         {"Quick Launcher", "Slider Actions", "Album Artwork", "Close All Apps", "Disable in Applications"}) {
        visit(link);
        if (!eventsOf(views[views.size() - 2], "push").empty()) drive.back();
    }
    drive.back();
    visit("The Creators");
    drive.finish();
    return views;
}

struct Device {
    const char* model;
    const char* shape;
};

const Device devices[] = {{"iPhone4,1", "phone-3.5"},
                          {"iPhone6,2", "phone-4"},
                          {"iPhone8,1", "phone-4.7"},
                          {"iPhone7,1", "phone-5.5"},
                          {"iPad4,1", "tablet"}};

const std::vector<std::string> pages = {"",
                                        "Advanced Options",
                                        "Advanced Options/Quick Launcher",
                                        "Advanced Options/Slider Actions",
                                        "Advanced Options/Album Artwork",
                                        "Advanced Options/Close All Apps",
                                        "Advanced Options/Disable in Applications",
                                        "The Creators"};

// The one application is installed under its identifier's name, and ticked.
const std::string storedSettings =
    settingsOf({{"CloseAllAppsExceptions", "<dict>\n\t<key>com.example.kettle</key>\n\t<true/>\n\t</dict>"},
                {"HotCorners", "<false/>"},
                {"MinimalControlCenterCondition", "<integer>6</integer>"},
                {"OpenToLastApp", "<true/>"}});

struct DevicesReport : CustomersReport, testing::WithParamInterface<std::tuple<Device, bool>> {
    DevicesReport() {
        if (std::get<bool>(GetParam())) {
            writeSettings(phone, storedSettings);
            writeText(phone / "Applications/Kettle.app/Info.plist",
                      settingsOf({{"CFBundleDisplayName", "<string>com.example.kettle</string>"},
                                  {"CFBundleIdentifier", "<string>com.example.kettle</string>"}}));
        }
        report(std::get<Device>(GetParam()).model);
    }

    const std::string shape = std::get<Device>(GetParam()).shape;
};

TEST_P(DevicesReport, printsEveryPageAsTheCustomersDeviceDoes) {
    std::map<std::pair<std::string, bool>, std::pair<int, std::string>> wanted;
    for (const std::string& page : pages) {
        for (const bool isJson : {false, true})
            wanted[{page, isJson}] = show(customer, page, isJson, {"--device", shape});
    }
    fs::remove_all(phone.folder);
    for (const std::string& page : pages) {
        for (const bool isJson : {false, true})
            EXPECT_EQ(show(desk, page, isJson), wanted.at({page, isJson})) << page;
    }
}

TEST_P(DevicesReport, hasTheViewsOfTheCustomersDevice) {
    const auto wanted = viewsOf(customer, {"--device", shape});
    fs::remove_all(phone.folder);
    EXPECT_EQ(viewsOf(desk, {}), wanted);
}

INSTANTIATE_TEST_SUITE_P(EveryShape, DevicesReport, testing::Combine(testing::ValuesIn(devices), testing::Bool()),
                         [](const auto& about) {
                             std::string name = std::get<Device>(about.param).shape;
                             std::erase_if(name, [](char letter) { return std::isalnum(letter) == 0; });
                             return name + (std::get<bool>(about.param) ? "WithSettings" : "Bare");
                         });

TEST_F(CustomersReport, listsTickedApplicationsByTheirIdentifiers) {
    writeSettings(phone, storedSettings);
    report("iPhone6,1");
    const Outcome outcome = desk.run({"show", "Advanced Options/Close All Apps"});
    EXPECT_THAT(outcome.output, HasSubstr("com.example.kettle"));
    EXPECT_EQ(outcome.errors,
              "trivel3ctl: Trivel.plist is a support report: of applications it names those that are ticked alone, and "
              "it tells no exceptions\n");
}

TEST_F(CustomersReport, isSilentWhereItLacksNothing) {
    writeSettings(phone, storedSettings);
    report("iPhone6,1");
    const std::vector<Trivel3ctl::Arguments> commands = {{"show"},
                                                         {"show", "Advanced Options"},
                                                         {"show", "Advanced Options/Slider Actions"},
                                                         {"get", "QuickSwitcher"},
                                                         {"list"},
                                                         {"export"}};
    for (const Trivel3ctl::Arguments& command : commands)
        EXPECT_EQ(desk.run(command).errors, "") << command.front();
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

// -- In an e-mail ----------------------------------------------------------------------------------------

std::string inBase64(const std::string& bytes) {
    std::string text;
    platform::appendBase64Lines(text, std::as_bytes(std::span(bytes)), 76, 0);
    return "Content-Transfer-Encoding: base64\n\n" + text;
}

std::string inQuotedPrintable(const std::string& bytes) {
    std::string text = "content-transfer-encoding: Quoted-Printable\n\n";
    constexpr const char* digits = "0123456789ABCDEF";
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        const auto byte = static_cast<unsigned char>(bytes[place]);
        text += {'=', digits[byte / 16], digits[byte % 16]};
        if (place % 20 == 19) text += "=\n";
    }
    return text;
}

std::string multipart(const std::vector<std::string>& parts, const std::string& boundary) {
    std::string text = "Content-Type: multipart/mixed;\n boundary=\"" + boundary + "\"\n\nFor old programs.\n";
    for (const std::string& part : parts)
        text += "--" + boundary + "\n" + part + "\n";
    return text + "--" + boundary + "--\n";
}

std::string messageOf(const std::vector<std::string>& parts) {
    return "Received: from secret.example\nFrom: Secret Customer <secret@customer.example>\nSubject: A secret "
           "matter\nMIME-Version: 1.0\n" +
           multipart(parts, "outer");
}

const std::string words = "Content-Type: text/plain\n\nIt is secret, and does not work.\n--\nSecret Customer";
const std::string otherList =
    "Content-Type: application/x-plist\n\n<plist><dict><key>Secret</key><Secret/></dict></plist>";

struct MailedReport : CustomersReport {
    MailedReport() {
        writeText(phone / "var/lib/dpkg/status", "Package: com.example.secret\nMaintainer: Secret\n");
        writeSettings(phone, storedSettings);
        report("iPhone6,1");
        bytes = readText(file);
        fs::remove_all(phone.folder);
    }
    void expectShown(const std::string& message) {
        writeText(file, message);
        EXPECT_EQ(desk.run({"get", "HotCorners"}).output, "false\n") << desk.run({"get", "HotCorners"}).errors;
        EXPECT_EQ(desk.run({"--phone", "-", "get", "HotCorners"}, message).output, "false\n");
    }
    void expectNone(const std::string& message, const std::string& reason) {
        writeText(file, message);
        expectFailure(desk.run({"show"}), 1, "it is an e-mail that holds no support report" + reason + "\n");
        EXPECT_THAT(desk.run({"show"}).errors, testing::Not(testing::ContainsRegex("[Ss]ecret")));
    }

    std::string bytes;
};

TEST_F(MailedReport, isFoundAmongItsParts) {
    expectShown(messageOf({words, otherList, inBase64(bytes)}));
    expectShown(messageOf({inQuotedPrintable(bytes), words}));
    expectShown(messageOf({words, multipart({words, multipart({inBase64(bytes)}, "inner")}, "inn")}));
    expectShown(messageOf({"Content-Type: message/rfc822\n\n" + messageOf({words, inBase64(bytes)})}));
    expectShown("Subject: alone\n" + inBase64(bytes));
    expectShown("From desk Mon Jan  5 10:00:00 2015\n" + messageOf({inBase64(bytes)}));
}

TEST_F(MailedReport, isFoundWhereLinesEndAsInTheStandard) {
    std::string message = messageOf({words, inBase64(bytes)});
    for (std::size_t place = 0; (place = message.find('\n', place)) != std::string::npos; place += 2)
        message.insert(place, "\r");
    expectShown(message);
}

TEST_F(MailedReport, isTheFirstOne) {
    const std::string later = propertyList(
        "<dict><key>Packages</key><string/><key>Preferences</key><dict/><key>ProductType</key><string/></dict>");
    expectShown(messageOf({otherList, inBase64(bytes), inBase64(later)}));
}

TEST_F(MailedReport, isMissedInOneLine) {
    expectNone(messageOf({words, otherList}), "");
    expectNone("Subject: secret\n\n", "");
    expectNone("Subject: secret\nContent-Type: multipart/mixed\n\n--\nsecret\n", "");
    expectNone(messageOf({inBase64(bytes).substr(0, 200)}), "");
    expectNone(messageOf(std::vector<std::string>(1001, words)), " as far as it can be read: it has too many parts");
    std::string nested = inBase64(bytes);
    for (int depth = 0; depth < 17; ++depth)
        nested = multipart({nested}, "b" + std::to_string(depth));
    expectNone(messageOf({nested}), " as far as it can be read: its parts nest too deep");
    expectNone("Subject: secret\n" + std::string(1 << 20, 'a') + ": b\n" + inBase64(bytes),
               " as far as it can be read: its header is too long");
}

// Of packages and of the e-mail: the report itself is what `report` alone writes.
TEST_F(MailedReport, keepsWhatIsPrivate) {
    writeText(file, messageOf({words, otherList, inBase64(bytes)}));
    std::vector<Trivel3ctl::Arguments> commands = {{"list"},           {"list", "--json"},
                                                   {"export"},         {"diff"},
                                                   {"diff", "--json"}, {"get", "HotCorners", "--json"},
                                                   {"get", "Packages"}};
    for (const std::string& page : pages) {
        commands.push_back({"show", page, "--verbose"});
        commands.push_back({"show", page, "--json"});
    }
    const auto isSilent = testing::Not(testing::ContainsRegex("[Ss]ecret"));
    for (const Trivel3ctl::Arguments& command : commands) {
        const Outcome outcome = desk.run(command);
        EXPECT_THAT(outcome.output + outcome.errors, isSilent) << command.front();
    }
    Drive drive(desk);
    EXPECT_THAT(drive.tap("Fenwary Support").dump(), isSilent);
    EXPECT_THAT(drive.send({{"do", "get"}, {"key", "Packages"}}).dump(), isSilent);
    EXPECT_THAT(drive.send({{"do", "view"}}).dump(), isSilent);
    EXPECT_THAT(drive.finish().errors, isSilent);
}

TEST_F(MailedReport, takesNoMoreThanItsShareOfMemory) {
#ifdef TRIVEL3_SANITIZED
    GTEST_SKIP() << "sanitizers take address space of their own";
#endif
    constexpr std::size_t most = std::size_t{64} << 20;
    const auto filled = [](const std::string& head, const std::string& piece, const std::string& tail = {}) {
        std::string text = head;
        text.reserve(most);
        while (text.size() + piece.size() + tail.size() <= most)
            text += piece;
        return text + tail;
    };
    const std::string begin = "<plist><dict><key>Packages</key><string>";
    const std::string end = "</string><key>ProductType</key><string/><key>Preferences</key><dict/></dict></plist>";
    desk.runThrough({"/bin/sh", "-c", "ulimit -v 1048576; exec \"$@\"", "sh"});
    const std::pair<std::string, const char*> hostile[] = {
        {filled("<plist><array>", "<dict/>"), "too many values"},
        {filled("", "a:\n"), "its header is too long"},
        {filled("To: ", "a@b,"), "its header is too long"},
        {filled("Content-Type: multipart/mixed; boundary=x\n\n", "--x\n\n"), "too many parts"},
        {filled("Content-Transfer-Encoding: base64\n\n", "PHBs"), "holds no support report"}};
    for (const auto& [text, reason] : hostile) {
        writeText(file, text);
        expectFailure(desk.run({"show"}), 1, reason);
    }
    writeText(file, filled(begin, "Package: p\n", end));
    EXPECT_EQ(desk.run({"get", "HotCorners"}).output, "true\n");
    writeText(file, std::string(most + 1, ' '));
    expectFailure(desk.run({"show"}), 1, "holds more than 64 MB");
}

}  // namespace
}  // namespace terminal_test
