// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <sys/stat.h>
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

struct Plist : testing::Test {
    std::string write(const std::string& name, std::string_view contents) {
        const std::string path = ctl.folder() / name;
        writeText(path, contents);
        return path;
    }

    void expectLint(const std::string& contents, const std::string& verdict) {
        const std::string path = write("linted", contents);
        const Outcome outcome = ctl.run({"plist", "lint", path});
        EXPECT_EQ(outcome.output, path + ": " + verdict + "\n");
        EXPECT_EQ(outcome.status, verdict == "OK" ? 0 : 1);
        EXPECT_EQ(outcome.errors, "");
    }

    Trivel3ctl ctl;
    const std::string sample = settingsOf({{"A", "<integer>1</integer>"}, {"B", "<string>b</string>"}});
};

TEST_F(Plist, soundFilesAreOk) {
    expectLint(sample, "OK");
    expectLint("<true/>", "OK");
    expectLint(settingsWithNull(), "OK");
}

TEST_F(Plist, faultsInXmlAreToldByLineAndColumn) {
    expectLint("", "1:1: there is no element");
    expectLint("<plist>\n<dict>\n  <key>a</key>\n  <foo/>\n</dict>\n</plist>\n", "4:3: unknown tag <foo/>");
    expectLint("<plist><dict><key>a</key></dict></plist>", "1:26: a key without a value");
}

TEST_F(Plist, faultsInBinaryFilesAreToldByOffset) {
    expectLint(settingsWithNull().substr(0, 30), "offset 0: too short for a header and a trailer");
    std::string badObject = settingsWithNull();
    badObject[15] = '\x0E';  // where the null is, an object of no known kind
    const Outcome outcome = ctl.run({"plist", "lint", write("bad", badObject)});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, HasSubstr("/bad: offset 15: "));
}

TEST_F(Plist, everyFileIsJudged) {
    const std::string sound = write("sound", sample);
    const std::string damaged = write("damaged", "<plist>");
    const Outcome outcome = ctl.run({"plist", "lint", damaged, sound, damaged, sound});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 4);
    EXPECT_THAT(outcome.output, testing::EndsWith(sound + ": OK\n"));
    EXPECT_THAT(outcome.output, testing::StartsWith(damaged + ": 1:"));
}

TEST_F(Plist, fileThatCannotBeReadIsSaidOnStandardError) {
    const std::string sound = write("sound", sample);
    const Outcome outcome = ctl.run({"plist", "lint", ctl.folder() / "missing", sound});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, sound + ": OK\n");
    EXPECT_EQ(outcome.errors, "trivel3ctl: " + (ctl.folder() / "missing") +
                                  ": No such file or directory; give the path of a file that can be read\n");
    expectFailure(ctl.run({"plist", "lint", ctl.folder().path()}), 1, "Is a directory");
    expectFailure(ctl.run({"plist", "convert", "xml1", ctl.folder() / "missing"}), 1, "No such file or directory");
}

// A device without end is given up before it has taken all memory.
TEST_F(Plist, endlessInputIsAFailure) {
    ctl.runThrough({"/bin/sh", "-c", "exec \"$@\" </dev/zero", "sh"});
    expectFailure(ctl.run({"plist", "lint", "/dev/stdin"}), 1, "/dev/stdin: holds more than 64 MB");
}

// Nobody may ever write into a FIFO, and no end may come of a device.
TEST_F(Plist, whatIsNoFileIsNotWaitedFor) {
    const std::string fifo = ctl.folder() / "fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const std::string link = ctl.folder() / "link";
    fs::create_symlink("fifo", link);
    for (const std::string& path : {fifo, link}) {
        expectFailure(ctl.run({"plist", "lint", path}), 1, path + ": it is a FIFO, not a file");
        expectFailure(ctl.run({"plist", "convert", "xml1", path}), 1, path + ": it is a FIFO, not a file");
    }
    expectFailure(ctl.run({"plist", "lint", "/dev/zero"}), 1, "/dev/zero: it is a device, not a file");
}

TEST_F(Plist, pipesThatAreOpenAreReadToTheirEnd) {
    const Outcome linted = ctl.run({"plist", "lint", "/dev/stdin"}, sample);
    EXPECT_EQ(linted.output, "/dev/stdin: OK\n");
    EXPECT_EQ(linted.status, 0);
    EXPECT_EQ(ctl.run({"plist", "convert", "xml1", "/dev/fd/0"}, sample).output, sample);
    const std::string path = write("xml", sample);
    ctl.runThrough({"/bin/bash", "-c", "exec \"$@\" <(cat '" + path + "')", "bash"});
    EXPECT_EQ(ctl.run({"plist", "convert", "xml1"}).output, sample);
}

TEST_F(Plist, nothingOfAFileSteersATerminal) {
    const Outcome outcome = ctl.run({"plist", "lint", write("a\x1b[31m\nb", "<\x1b[31m/>")});
    EXPECT_EQ(outcome.output.find('\x1b'), std::string::npos);
    EXPECT_THAT(outcome.output, HasSubstr("/a\uFFFD[31m\uFFFDb: 1:1: unknown tag"));
}

TEST_F(Plist, noPhoneIsNeeded) {
    ctl.usePhone(ctl.folder() / "missing");
    expectDone(ctl.run({"plist", "lint", write("sound", sample)}));
}

TEST_F(Plist, convertsBothWaysOnStandardOutput) {
    const Outcome binary = ctl.run({"plist", "convert", "binary1", write("xml", sample)});
    expectDone(binary);
    EXPECT_EQ(binary.output.substr(0, 8), "bplist00");

    const std::string path = write("binary", binary.output);
    for (const Trivel3ctl::Arguments& output : {Trivel3ctl::Arguments{}, {"-o", "-"}, {"--output", "-"}}) {
        Trivel3ctl::Arguments arguments{"plist", "convert", "xml1", path};
        arguments.insert(arguments.end(), output.begin(), output.end());
        const Outcome xml = ctl.run(arguments);
        expectDone(xml);
        EXPECT_EQ(xml.output, sample);
    }
}

TEST_F(Plist, convertsToJson) {
    const std::string path = write("xml", propertyList("<dict><key>a</key><array><true/><integer>-3</integer>"
                                                       "<integer>18446744073709551615</integer><real>1.5</real>"
                                                       "<string>å\"</string><dict/></array></dict>"));
    const Outcome outcome = ctl.run({"plist", "convert", "json", path});
    expectDone(outcome);
    EXPECT_EQ(outcome.output, "{\"a\":[true,-3,18446744073709551615,1.5,\"å\\\"\",{}]}\n");
}

TEST_F(Plist, refusesWhatJsonCannotSay) {
    const std::vector<std::pair<std::string, std::string>> refused = {
        {"<data>AQI=</data>", "it holds data"},
        {"<date>2014-12-25T10:00:00Z</date>", "it holds a date"},
        {"<array><real>nan</real></array>", "it holds a real number that is not finite"},
        {"<dict><key>CF$UID</key><integer>1</integer></dict>", "it holds a UID"}};
    for (const auto& [element, reason] : refused) {
        const std::string output = ctl.folder() / "output";
        expectFailure(ctl.run({"plist", "convert", "json", write("xml", element), "-o", output}), 1,
                      "/xml: cannot be written as json: " + reason);
        EXPECT_FALSE(fs::exists(output));
    }
}

TEST_F(Plist, refusesWhatXmlCannotSay) {
    const std::string path = write("null", settingsWithNull());
    expectFailure(ctl.run({"plist", "convert", "xml1", path, "-o", path}), 1,
                  "/null: cannot be written as xml1: it holds null");
    EXPECT_EQ(readText(path), settingsWithNull());
    EXPECT_EQ(ctl.run({"plist", "convert", "json", path}).output, "{\"Odd\":null}\n");
}

// Each array holds the one before it twice: a few hundred bytes, and no end to them in JSON.
TEST_F(Plist, refusesWhatUnfoldsWithoutEnd) {
    constexpr int levels = 60;
    std::string file = "bplist00";
    std::string offsets;
    for (int i = 0; i < levels; ++i) {
        offsets += static_cast<char>(file.size());
        file += '\xA2';
        file += std::string(2, static_cast<char>(i + 1));
    }
    offsets += static_cast<char>(file.size());
    file += '\x09';
    const std::size_t table = file.size();
    file += offsets + std::string(6, '\0') + "\x01\x01" + std::string(7, '\0') + static_cast<char>(levels + 1) +
            std::string(15, '\0') + static_cast<char>(table);
    const std::string path = write("unfolding", file);

    expectDone(ctl.run({"plist", "lint", path}));
    expectFailure(ctl.run({"plist", "convert", "json", path}), 1, "more than 4 million values or 256 MB of text");
    expectFailure(ctl.run({"plist", "convert", "xml1", path}), 1, "shared too often");
}

TEST_F(Plist, damagedFilesAreNotConverted) {
    expectFailure(ctl.run({"plist", "convert", "binary1", write("damaged", "<plist>\n<foo/>")}), 1,
                  "/damaged: 2:1: unknown tag <foo/>");
}

TEST_F(Plist, convertsInPlaceKeepingPermissions) {
    const std::string path = write("file", sample);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    expectDone(ctl.run({"plist", "convert", "binary1", path, "-o", path}));
    EXPECT_EQ(readText(path).substr(0, 8), "bplist00");
    expectDone(ctl.run({"plist", "convert", "xml1", path, "-o", path}));
    EXPECT_EQ(readText(path), sample);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Plist, failedWriteInPlaceLeavesTheOldFile) {
    const std::string path = write("work/file", sample);
    ctl.runThrough({"/bin/sh", "-c", "ulimit -f 0; exec \"$@\"", "sh"});
    expectFailure(ctl.run({"plist", "convert", "binary1", path, "-o", path}), 1, "cannot write " + path);
    EXPECT_EQ(readText(path), sample);
    EXPECT_THAT(namesIn(ctl.folder() / "work"), ElementsAre("file"));
}

TEST_F(Plist, failedWriteOfANewFileLeavesNone) {
    const std::string path = write("xml", sample);
    const std::string output = ctl.folder() / "work/new";
    fs::create_directory(ctl.folder() / "work");
    ctl.runThrough({"/bin/sh", "-c", "ulimit -f 0; exec \"$@\"", "sh"});
    expectFailure(ctl.run({"plist", "convert", "binary1", path, "-o", output}), 1, "cannot write " + output);
    EXPECT_TRUE(fs::is_empty(ctl.folder() / "work"));
}

// Not even the part of it that there was room for.
TEST_F(Plist, newFileIsThereWholeOrNotAtAll) {
    const std::string text = "<string>" + std::string(100'000, 'x') + "</string>\n";
    const std::string path = write("xml", propertyList(text));
    fs::create_directory(ctl.folder() / "work");
    ctl.runThrough({"/bin/sh", "-c", "ulimit -f 100; exec \"$@\"", "sh"});
    for (const char* name : {"work/new", "work/link"}) {
        fs::create_symlink("target", ctl.folder() / "work/link");
        const std::string output = ctl.folder() / name;
        expectFailure(ctl.run({"plist", "convert", "xml1", path, "-o", output}), 1,
                      "cannot write " + output + ": File too large");
        fs::remove(ctl.folder() / "work/link");
        EXPECT_TRUE(fs::is_empty(ctl.folder() / "work"));
    }
}

TEST_F(Plist, linkToNothingYetLeadsToTheNewFile) {
    const std::string link = ctl.folder() / "work/link";
    fs::create_directory(ctl.folder() / "work");
    fs::create_symlink("target", link);
    expectDone(ctl.run({"plist", "convert", "xml1", write("xml", sample), "-o", link}));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(readText(ctl.folder() / "work/target"), sample);
}

// The file that standard output goes into is its owner's: others may have it open too.
TEST_F(Plist, standardOutputIsWrittenIntoByItsName) {
    const std::string file = write("output", "old");
    fs::create_hard_link(file, ctl.folder() / "other");
    expectDone(ctl.runInto(file, {"plist", "convert", "xml1", write("xml", sample), "-o", "/dev/stdout"}));
    EXPECT_EQ(readText(ctl.folder() / "other"), sample);
}

TEST_F(Plist, newFilesAreMadeAsTheUsersMaskSays) {
    const std::string path = write("xml", sample);
    ctl.runThrough({"/bin/sh", "-c", "umask 077; exec \"$@\"", "sh"});
    expectDone(ctl.run({"plist", "convert", "xml1", path, "-o", ctl.folder() / "new"}));
    EXPECT_EQ(readText(ctl.folder() / "new"), sample);
    EXPECT_EQ(fs::status(ctl.folder() / "new").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Plist, missingOutputFolderIsAFailure) {
    expectFailure(ctl.run({"plist", "convert", "xml1", write("xml", sample), "-o", ctl.folder() / "no/new"}), 1,
                  "no/new: No such file or directory");
}

TEST_F(Plist, linkIsFollowedAndStays) {
    const std::string target = write("target", "old");
    const std::string link = ctl.folder() / "link";
    fs::create_symlink(target, link);
    expectDone(ctl.run({"plist", "convert", "xml1", write("xml", sample), "-o", link}));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(readText(target), sample);
}

// What is no regular file is written into, never replaced.
TEST_F(Plist, pipesAndDevicesAreWrittenInto) {
    const std::string pipe = ctl.folder() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const hosts::Descriptor reader{::open(pipe.c_str(), O_RDWR | O_CLOEXEC)};
    expectDone(ctl.run({"plist", "convert", "xml1", write("xml", sample), "-o", pipe}));
    std::string got(sample.size(), '\0');
    EXPECT_EQ(::read(reader.get(), got.data(), got.size()), static_cast<ssize_t>(sample.size()));
    EXPECT_EQ(got, sample);
    EXPECT_TRUE(fs::is_fifo(pipe));

    expectFailure(ctl.run({"plist", "convert", "xml1", write("xml", sample), "-o", "/dev/full"}), 1,
                  "cannot write /dev/full: No space left on device");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(Plist, characterThatXmlCannotSayIsNamedWithItsPlace) {
    const std::string file = ctl.folder() / "control.plist";
    writeText(file, settingsOf({{"Mine", "<string>a\x01</string>"}}));
    const Outcome outcome = ctl.run({"plist", "lint", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output,
              file + ": 6:11: U+0001, which XML cannot say: other readers change it or refuse the file\n");
}

TEST_F(Plist, readsStandardInput) {
    const std::string list = settingsOf({{"Mine", "<true/>"}});
    EXPECT_EQ(ctl.run({"plist", "lint", "-"}, list).output, "standard input: OK\n");
    EXPECT_EQ(ctl.run({"plist", "convert", "xml1", "-"}, list).output, list);
}

}  // namespace
}  // namespace terminal_test
