// SPDX-License-Identifier: MIT
// --verbose says what was passed over on the phone, and why: a line for each thing, once.
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"
#include "tests/kit/private_bus.h"

namespace terminal_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const Trivel3ctl::Arguments showApplications = {"--verbose", "show", "Advanced Options/Disable in Applications"};
std::string skipped(const std::string& path, const std::string& reason) {
    return "trivel3ctl: skipped " + path + ": " + reason;
}

struct Verbose : testing::Test {
    Verbose() {
        ctl.usePhone(phone.folder);
        fs::create_directories(phone.preferencesFolder());
    }

    std::vector<std::string> complaints(const Trivel3ctl::Arguments& arguments) {
        const Outcome outcome = ctl.run(arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return linesOf(outcome.errors);
    }

    // The settings are read many times for a list.
    void expectOneComplaint(const std::string& reason) {
        EXPECT_THAT(complaints({"list", "--verbose"}), ElementsAre(skipped(settingsPath, reason)));
        EXPECT_THAT(complaints({"list"}), ElementsAre(StartsWith("trivel3ctl: These are defaults: cannot read ")));
    }

    void install(const std::string& folder, const std::string& identifier, const std::string& more = {}) {
        writeText(phone.folder + folder + "/Info.plist", propertyList("<dict><key>CFBundleIdentifier</key><string>" +
                                                                      identifier + "</string>" + more + "</dict>\n"));
    }
    void installWithIcon(const std::string& icon) {
        install("/Applications/Icon.app", "example.icon",
                "<key>CFBundleIconFiles</key><array><string>Icon</string></array>");
        if (!icon.empty()) writeText(phone.folder + "/Applications/Icon.app/Icon.png", icon);
    }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(Verbose, saysNothingOfAPhoneInOrder) {
    ctl.unset("TRIVEL3_PHONE");
    EXPECT_THAT(complaints({"list", "--verbose"}), IsEmpty());
    EXPECT_THAT(complaints(showApplications), IsEmpty());
}

TEST_F(Verbose, tellsWhyTheSettingsFileCannotBeRead) {
    const std::string file = phone.settingsFile();
    ASSERT_EQ(::mkfifo(file.c_str(), 0644), 0);
    expectOneComplaint("it is a FIFO, not a regular file");
    fs::remove(file);
    fs::create_directory(file);
    expectOneComplaint("it is a folder, not a regular file");
    fs::remove(file);
    fs::create_symlink("nowhere.plist", file);
    expectOneComplaint(std::string(settingsPath) + " is a link that leads to nothing on the phone");
    fs::remove(file);
    fs::create_symlink(settingsName, file);
    expectOneComplaint("Too many levels of symbolic links");
    fs::remove(file);
    writeText(file, "");
    fs::resize_file(file, std::uintmax_t{4} << 30);
    expectOneComplaint("it holds 4294967296 bytes, and at most 67108864 are read");
}

TEST_F(Verbose, tellsOfASocketInTheSettingsFilesPlace) {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(phone.settingsFile().size(), sizeof address.sun_path);
    phone.settingsFile().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    expectOneComplaint("it is a socket, not a regular file");
    ::close(socket);
}

TEST_F(Verbose, tellsWhichFolderOnTheWayIsNone) {
    fs::remove(phone.preferencesFolder());
    fs::create_directory_symlink(phone.around.path(), phone.preferencesFolder());
    expectOneComplaint("/var/mobile/Library/Preferences is a link that leads to nothing on the phone");
    fs::remove(phone.preferencesFolder());
    writeText(phone.preferencesFolder(), "");
    expectOneComplaint("/var/mobile/Library/Preferences is a regular file, not a folder");
}

TEST_F(Verbose, tellsWhereTheSettingsFileIsMalformed) {
    writeSettings(phone, "<plist>\n<dict>\n  <key>HotCorners</key><wrong/>\n</dict></plist>");
    EXPECT_THAT(complaints({"list", "--verbose"}), ElementsAre(StartsWith(skipped(settingsPath, "3:"))));
    writeSettings(phone, "bplist00garbage");
    EXPECT_THAT(complaints({"list", "--verbose"}), ElementsAre(StartsWith(skipped(settingsPath, "offset "))));
    writeSettings(phone, propertyList("<array/>\n"));
    expectOneComplaint("its root is no dictionary");
}

TEST_F(Verbose, isTakenByEverySubcommandThatReadsThePhone) {
    writeSettings(phone, "garbage");
    for (const Trivel3ctl::Arguments& arguments : {Trivel3ctl::Arguments{"show"},
                                                   {"list"},
                                                   {"get", "HotCorners"},
                                                   {"reset", "HotCorners"},
                                                   {"drive"},
                                                   {},
                                                   {"set", "HotCorners", "off"}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        Trivel3ctl::Arguments verbose = arguments;
        verbose.push_back("--verbose");
        EXPECT_THAT(complaints(verbose), Contains(StartsWith(skipped(settingsPath, "1:1: "))));
    }
}

TEST_F(Verbose, isTakenByTheMonitor) {
    const PrivateBus bus;
    ctl.set("DBUS_SESSION_BUS_ADDRESS", bus.address());
    writeSettings(phone, propertyList("<true/>\n"));
    RunningTrivel3ctl monitor(ctl, {"monitor", "--verbose"});
    EXPECT_EQ(monitor.readErrorLine(), skipped(settingsPath, "its root is no dictionary"));
    EXPECT_EQ(monitor.readErrorLine(), "listening");
}

TEST_F(Verbose, tellsWhichFilesOfTheSupportReportCannotBeRead) {
    const std::string list = "/device-information.plist";
    const std::string packages = "/var/lib/dpkg/status";
    for (const std::string& file : {list, packages}) {
        writeText(phone.folder + file, "");
        fs::resize_file(phone.folder + file, std::uintmax_t{4} << 30);
    }
    RunningTrivel3ctl program(ctl, {"drive", "--verbose"});
    program.send("{\"do\":\"tap\",\"row\":\"Fenwary Support\"}\n");
    EXPECT_THAT(program.readLine().value_or(""), HasSubstr("\"present\""));
    EXPECT_THAT(linesOf(program.finish().errors), ElementsAre(StartsWith(skipped(list, "it holds 4294967296 bytes")),
                                                              StartsWith(skipped(packages, "it holds 4294967296 "))));
}

TEST_F(Verbose, tellsWhyAnApplicationIsNotListed) {
    const std::string folder = "/Applications/";
    fs::create_directories(phone.folder + folder + "Empty.app");
    writeText(phone.folder + folder + "Malformed.app/Info.plist", "<plist><dict>");
    install(folder + "Nameless.app", "");
    install(folder + "One.app", "example.one");
    install(std::string(userApplications) + "/1/Two.app", "example.one");
    ASSERT_EQ(::mkfifo((phone.folder + std::string(userApplications) + "/2").c_str(), 0644), 0);
    EXPECT_THAT(complaints(showApplications),
                ElementsAre(skipped(std::string(userApplications) + "/2", "it is a FIFO, not a folder"),
                            skipped(folder + "Empty.app", "it has no Info.plist that can be read"),
                            StartsWith(skipped(folder + "Malformed.app/Info.plist", "1:14: ")),
                            skipped(folder + "Malformed.app", "it has no Info.plist that can be read"),
                            skipped(folder + "Nameless.app", "its Info.plist has no usable CFBundleIdentifier"),
                            skipped(std::string(userApplications) + "/1/Two.app",
                                    folder + "One.app has the same identifier, example.one")));
}

TEST_F(Verbose, tellsWhyAnIconIsRefused) {
    const std::string icon = "/Applications/Icon.app/Icon.png";
    installWithIcon("no picture");
    EXPECT_THAT(complaints(showApplications), ElementsAre(skipped(icon, "it is no picture of a size that is shown")));
    const std::string head("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x3a\0\0\0\x3a\x08\x06\0\0\0\0\0\0\0", 33);
    installWithIcon(head);
    EXPECT_THAT(complaints(showApplications), ElementsAre(skipped(icon, "it is a damaged picture")));
    fs::resize_file(phone.folder + icon, std::uintmax_t{1} << 30);
    EXPECT_THAT(complaints(showApplications), ElementsAre(StartsWith(skipped(icon, "it holds 1073741824 bytes"))));
    fs::remove(phone.folder + icon);
    ASSERT_EQ(::mkfifo((phone.folder + icon).c_str(), 0644), 0);
    EXPECT_THAT(complaints(showApplications), ElementsAre(skipped(icon, "it is a FIFO, not a regular file")));
    fs::remove(phone.folder + icon);
    fs::create_symlink(phone.around / "outside.png", phone.folder + icon);
    writeText(phone.around / "outside.png", head);
    EXPECT_THAT(complaints(showApplications),
                ElementsAre(skipped(icon, icon + " is a link that leads to nothing on the phone")));
}

TEST_F(Verbose, keepsALineALineWhateverTheFilesAreCalled) {
    fs::create_directories(phone.folder + "/Applications/Evil\x1b[2J\n\x9b\u009b\u202e.app");
    const auto said = complaints(showApplications);
    EXPECT_THAT(said, ElementsAre(skipped("/Applications/Evil\uFFFD[2J\uFFFD\uFFFD\uFFFD\uFFFD.app",
                                          "it has no Info.plist that can be read")));
}

}  // namespace
}  // namespace terminal_test
