// SPDX-License-Identifier: MIT
// What a change does to a file that it cannot read, or whose file system promises less than a local disk.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <filesystem>
#include <fstream>

#include "platform/foundation/property_list.h"
#include "platform/services/dictionary_files.h"
#include "tests/kit/noted_outcomes.h"
#include "tests/kit/phone.h"
#include "tests/kit/watched_calls.h"

namespace {

namespace fs = std::filesystem;
using kit::openPhone;
using kit::readText;
using kit::settingsName;
using kit::settingsPath;
using kit::WatchedCalls;
using kit::writeText;
using platform::Dictionary;
using platform::DictionaryFiles;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// A phone with settings, and a program of ours that has opened it.
class KeptSettings : public testing::Test {
protected:
    KeptSettings() { writeText(phone.settingsFile(), whole); }

    void setKey(hosts::PhoneFileSystem& files) {
        files.tell(&outcomes, false);
        DictionaryFiles dictionaries(files, &outcomes);
        dictionaries.edit(settingsPath, [](Dictionary held) {
            held.set("Key", true);
            return held;
        });
    }
    void setKey(hosts::FileCalls& calls = hosts::FileCalls::system()) {
        auto files = openPhone(phone.folder, calls);
        setKey(files);
    }

    /// The keys of the settings file; "none" where it is no dictionary.
    std::vector<std::string> keys() const {
        const auto reading = platform::readPropertyList(readText(phone.settingsFile()));
        if (!reading || !reading.value->dictionary()) return {"none"};
        std::vector<std::string> all;
        for (const auto& [key, value] : *reading.value->dictionary())
            all.push_back(key);
        return all;
    }

    std::string kept() const { return phone.around / "state/trivel3/kept"; }

    const std::string whole = kit::settingsOf({{"First", "<true/>"}, {"Second", "<integer>2</integer>"}});
    kit::Phone phone;
    kit::NotedOutcomes outcomes;
};

TEST_F(KeptSettings, stayWhereTheReadingFailsForAReasonThatMayPass) {
    for (const int error : {EIO, ENOMEM, EMFILE, ENFILE, ENOTCONN, ETIMEDOUT, ESTALE, ECONNRESET}) {
        WatchedCalls calls{[&](const std::string& call, std::size_t) { return call == "read" ? error : 0; }};
        setKey(calls);
        EXPECT_EQ(readText(phone.settingsFile()), whole);
        EXPECT_THAT(outcomes.problems, ElementsAre(StartsWith("cannot read " + std::string(settingsPath)))) << error;
        outcomes.problems.clear();
    }
    setKey();
    EXPECT_THAT(keys(), ElementsAre("First", "Key", "Second"));
}

TEST_F(KeptSettings, sayHowToGetRidOfABadSector) {
    WatchedCalls calls{[](const std::string& call, std::size_t) { return call == "read" ? EIO : 0; }};
    setKey(calls);
    EXPECT_THAT(outcomes.problems, ElementsAre(HasSubstr("rename the file by hand")));
}

// The pane has taken defaults for what it could not read, and may repair other settings to match.
TEST_F(KeptSettings, stayForTheRestOfATurnInWhichTheyCouldNotBeRead) {
    bool fails = true;
    WatchedCalls calls{[&](const std::string& call, std::size_t) { return fails && call == "read" ? EIO : 0; }};
    auto files = openPhone(phone.folder, calls);
    DictionaryFiles dictionaries(files, &outcomes);
    EXPECT_EQ(dictionaries.read(settingsPath), nullptr);
    EXPECT_EQ(outcomes.unread.size(), 1U);
    fails = false;
    const auto change = [](Dictionary held) {
        held.set("Key", true);
        return held;
    };
    dictionaries.edit(settingsPath, change);
    dictionaries.edit("/other.plist", change);
    EXPECT_EQ(readText(phone.settingsFile()), whole);
    EXPECT_FALSE(fs::exists(phone / "other.plist"));
    EXPECT_EQ(outcomes.problems.size(), 2U);

    dictionaries.forget();
    dictionaries.edit(settingsPath, change);
    EXPECT_THAT(keys(), ElementsAre("First", "Key", "Second"));
}

// A writer that writes in place has cut the file short and is not done yet.
TEST_F(KeptSettings, areReadOnceMoreWhereAWriterMayBeHalfWay) {
    writeText(phone.settingsFile(), whole.substr(0, whole.size() / 2));
    bool isDone = false;
    WatchedCalls calls{nullptr, [&](const std::string& call, std::size_t) {
                           if (call != "read" || std::exchange(isDone, true)) return;
                           std::ofstream(phone.settingsFile(), std::ios::app) << whole.substr(whole.size() / 2);
                       }};
    setKey(calls);
    EXPECT_THAT(keys(), ElementsAre("First", "Key", "Second"));
    EXPECT_THAT(outcomes.problems, IsEmpty());
    EXPECT_FALSE(fs::exists(kept()));
}

TEST_F(KeptSettings, areTakenForUnreadableWhereAWriterDoesNotStop) {
    writeText(phone.settingsFile(), "<plist>");
    WatchedCalls calls{nullptr, [&](const std::string& call, std::size_t) {
                           if (call == "status") std::ofstream(phone.settingsFile(), std::ios::app) << "<dict>";
                       }};
    setKey(calls);
    EXPECT_THAT(outcomes.problems, ElementsAre(HasSubstr("another program keeps writing it")));
    EXPECT_THAT(readText(phone.settingsFile()), StartsWith("<plist><dict>"));
}

TEST_F(KeptSettings, areKeptInTheStateFolderBeforeTheyAreWrittenAnew) {
    writeText(phone.settingsFile(), "no property list");
    setKey();
    EXPECT_THAT(keys(), ElementsAre("Key"));
    const auto names = kit::namesIn(kept());
    ASSERT_EQ(names.size(), 1U);
    EXPECT_THAT(names[0], StartsWith("phone-"));
    EXPECT_THAT(names[0], HasSubstr(settingsName));
    EXPECT_EQ(readText(kept() + "/" + names[0]), "no property list");
    EXPECT_EQ(fs::status(kept()).permissions(), fs::perms{0700});
    EXPECT_EQ(fs::status(kept() + "/" + names[0]).permissions(), fs::perms{0600});
    EXPECT_THAT(outcomes.remarks, ElementsAre(HasSubstr(kept() + "/" + names[0])));
}

TEST_F(KeptSettings, areMovedAsideWhereTheStateFolderCannotBeWritten) {
    writeText(phone.settingsFile(), "no property list");
    writeText(phone.around / "state/trivel3", "a file in the folder's place");
    setKey();
    EXPECT_THAT(keys(), ElementsAre("Key"));
    const auto names = kit::namesIn(phone.preferencesFolder());
    ASSERT_EQ(names.size(), 2U);
    EXPECT_THAT(names[1], StartsWith(std::string(settingsName) + ".unread-"));
    EXPECT_EQ(readText(phone.preferencesFolder() + "/" + names[1]), "no property list");
    EXPECT_THAT(outcomes.remarks, ElementsAre(HasSubstr(names[1])));
}

TEST_F(KeptSettings, areMovedAsideWhereTheyAreTooLongToBeRead) {
    const auto size = platform::FileSystem::usualReadLimit + 1;
    fs::resize_file(phone.settingsFile(), size);
    setKey();
    EXPECT_THAT(keys(), ElementsAre("Key"));
    const auto names = kit::namesIn(phone.preferencesFolder());
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(fs::file_size(phone.preferencesFolder() + "/" + names[1]), size);
    EXPECT_FALSE(fs::exists(kept()));
}

TEST_F(KeptSettings, areMovedAsideWhereTheyMayNotBeRead) {
    WatchedCalls calls{[](const std::string& call, std::size_t) { return call == "inspect" ? EACCES : 0; }};
    setKey(calls);
    EXPECT_THAT(keys(), ElementsAre("Key"));
    const auto names = kit::namesIn(phone.preferencesFolder());
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(readText(phone.preferencesFolder() + "/" + names[1]), whole);
}

TEST_F(KeptSettings, areMovedBackWhereTheNewFileCannotTakeTheirPlace) {
    int renames = 0;
    WatchedCalls calls{[&](const std::string& call, std::size_t) {
        if (call == "inspect") return EACCES;
        return call == "rename" && ++renames == 2 ? EIO : 0;
    }};
    setKey(calls);
    EXPECT_EQ(readText(phone.settingsFile()), whole);
    EXPECT_THAT(kit::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
    EXPECT_EQ(outcomes.problems.size(), 1U);
}

TEST_F(KeptSettings, areKeptUpToALimitAndTheOldestGoFirst) {
    const auto keepOne = [&](const std::string& contents) {
        writeText(phone.settingsFile(), contents);
        setKey();
    };
    keepOne("first");
    const std::string first = kept() + "/" + kit::namesIn(kept()).at(0);
    keepOne("second");
    // Files without blocks are as long as others.
    fs::resize_file(first, std::uintmax_t{64} << 20);
    fs::last_write_time(first, fs::file_time_type::clock::now() - std::chrono::hours{1});
    writeText(kept() + "/another-phone-12345678 file", "kept");
    keepOne("third");
    std::vector<std::string> contents;
    for (const auto& name : kit::namesIn(kept()))
        contents.push_back(readText(kept() + "/" + name));
    EXPECT_THAT(contents, testing::UnorderedElementsAre("kept", "second", "third"));
}

// Of other dictionaries nothing is kept, however often they are changed.
TEST_F(KeptSettings, areNotKeptWhereTheyAreUnderstood) {
    setKey();
    EXPECT_THAT(kit::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
    EXPECT_FALSE(fs::exists(kept()));
    EXPECT_THAT(outcomes.remarks, IsEmpty());
}

// Calls on a file system that replaces nothing by renaming.
class NoReplacing : public WatchedCalls {
public:
    using WatchedCalls::WatchedCalls;
    int rename(int folder, const char* from, const char* to) override {
        struct stat status {};
        if (::fstatat(folder, to, &status, AT_SYMLINK_NOFOLLOW) != 0) return WatchedCalls::rename(folder, from, to);
        errno = EPERM;
        return -1;
    }
};

TEST_F(KeptSettings, areReplacedInStepsWhereRenamingReplacesNothing) {
    NoReplacing calls;
    setKey(calls);
    EXPECT_THAT(keys(), ElementsAre("First", "Key", "Second"));
    EXPECT_THAT(kit::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
    EXPECT_THAT(outcomes.remarks, ElementsAre(HasSubstr("replaces no file in one step")));
    EXPECT_THAT(outcomes.problems, IsEmpty());
}

TEST_F(KeptSettings, areFoundAsideWhereTheMachineStoppedBetweenTheSteps) {
    fs::rename(phone.settingsFile(), phone.preferencesFolder() + "/." + settingsName + ".aside");
    std::string contents;
    EXPECT_TRUE(openPhone(phone.folder).readFile(settingsPath, contents));
    EXPECT_EQ(contents, whole);
    setKey();
    EXPECT_THAT(keys(), ElementsAre("First", "Key", "Second"));
    EXPECT_THAT(kit::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

TEST_F(KeptSettings, arePutBackWhereTheSecondStepFails) {
    int renames = 0;
    NoReplacing calls{
        [&](const std::string& call, std::size_t) { return call == "rename" && ++renames == 2 ? EIO : 0; }};
    setKey(calls);
    EXPECT_EQ(readText(phone.settingsFile()), whole);
    EXPECT_THAT(kit::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
    EXPECT_EQ(outcomes.problems.size(), 1U);
}

TEST_F(KeptSettings, areWrittenWhereFilesHaveNoLinkCount) {
    struct NoLinkCount : hosts::FileCalls {
        int status(int file, struct stat& status) override {
            const int result = FileCalls::status(file, status);
            status.st_nlink = 0;
            return result;
        }
    } calls;
    setKey(calls);
    EXPECT_THAT(keys(), ElementsAre("First", "Key", "Second"));
    EXPECT_THAT(outcomes.remarks, ElementsAre(HasSubstr("does not count the names")));
}

TEST_F(KeptSettings, keepTheirExtendedAttributes) {
    if (::setxattr(phone.settingsFile().c_str(), "user.note", "kept", 4, 0) != 0) {
        GTEST_SKIP() << "the file system of temporary files has no attributes";
    }
    setKey();
    char value[8] = {};
    EXPECT_EQ(::getxattr(phone.settingsFile().c_str(), "user.note", value, sizeof value), 4);
    EXPECT_STREQ(value, "kept");
}

// A second program, which knows no lock, changes another setting just before the new file takes the old one's place.
TEST_F(KeptSettings, keepAChangeThatAnotherProgramMadeMeanwhile) {
    const std::string others = kit::settingsOf({{"First", "<false/>"}, {"Second", "<integer>2</integer>"}});
    bool isDone = false;
    WatchedCalls calls{[&](const std::string& call, std::size_t) {
        if (call == "synchronise" && !std::exchange(isDone, true)) {
            writeText(phone.preferencesFolder() + "/other", others);
            fs::rename(phone.preferencesFolder() + "/other", phone.settingsFile());
        }
        return 0;
    }};
    setKey(calls);
    EXPECT_THAT(keys(), ElementsAre("First", "Key", "Second"));
    EXPECT_EQ(platform::readPropertyList(readText(phone.settingsFile())).value->dictionary()->valueForKey("First"),
              platform::Value(false));
    EXPECT_THAT(kit::namesIn(phone.preferencesFolder()), ElementsAre(settingsName));
}

TEST_F(KeptSettings, stayWhereAnotherProgramNeverStopsChangingThem) {
    int number = 0;
    WatchedCalls calls{[&](const std::string& call, std::size_t) {
        if (call == "synchronise") {
            writeText(phone.settingsFile(),
                      kit::settingsOf({{"Number", "<integer>" + std::to_string(++number) + "</integer>"}}));
        }
        return 0;
    }};
    setKey(calls);
    EXPECT_THAT(keys(), ElementsAre("Number"));
    EXPECT_THAT(outcomes.problems, ElementsAre(HasSubstr("another program keeps changing it")));
}

}  // namespace
