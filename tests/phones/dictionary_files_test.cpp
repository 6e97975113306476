// SPDX-License-Identifier: MIT
#include "platform/services/dictionary_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "hosts/phones/file_reading.h"
#include "platform/foundation/property_list.h"
#include "platform/services/file_listener.h"
#include "tests/kit/noted_outcomes.h"
#include "tests/kit/phone.h"
#include "tests/kit/print.h"

namespace {

using namespace std::chrono_literals;
using kit::NotedOutcomes;
using kit::settingsPath;
using platform::Dictionary;
using platform::Problem;
using platform::Result;
using platform::Stamp;
using platform::Value;
using testing::ElementsAre;
using testing::IsEmpty;

/// Longer than the kernel's clock stands still.
constexpr auto severalTicks = 100ms;

/// The phone's files, and how often they were looked at, read and changed.
class CountedFiles final : public platform::FileSystem {
public:
    explicit CountedFiles(platform::FileSystem& files) : _files(files) {}

    using platform::FileSystem::readFile;
    Result<Stamp> look(std::string_view path) const override {
        ++looks;
        return _files.look(path);
    }
    Result<Stamp> readFile(std::string_view path, std::string& contents, std::size_t limit) const override {
        ++readings;
        return _files.readFile(path, contents, limit);
    }
    Result<std::vector<std::string>> listFolder(std::string_view path) const override {
        return _files.listFolder(path);
    }
    Result<Stamp> changeFile(std::string_view path, const platform::Change& change) override {
        // As where the file turns out to be newer than what was read.
        if (calledTwiceOn) (void)change(*calledTwiceOn);
        return _files.changeFile(path, change);
    }

    mutable int looks = 0;
    mutable int readings = 0;
    std::optional<std::string> calledTwiceOn;

private:
    platform::FileSystem& _files;
};

class DictionaryFilesTest : public testing::Test {
protected:
    DictionaryFilesTest() { put(1); }

    static std::string contentOf(int number) {
        return *platform::writeXmlPropertyList(Value(Dictionary{{"Number", number}})).bytes;
    }
    /// As another process replaces the file.
    void put(int number) {
        kit::writeText(phone.folder + "/new", contentOf(number));
        std::filesystem::create_directories(phone.preferencesFolder());
        std::filesystem::rename(phone.folder + "/new", phone.settingsFile());
    }
    /// As one that writes into it.
    void putInPlace(int number) {
        std::fstream(phone.settingsFile(), std::ios::in | std::ios::out | std::ios::binary) << contentOf(number);
    }
    int numberRead() {
        const auto content = files.read(settingsPath);
        const Value* number = content ? content->find("Number") : nullptr;
        return number ? static_cast<int>(platform::integerValue(*number)) : -1;
    }
    static Dictionary withNumber(Dictionary held, int number) {
        held.set("Number", number);
        return held;
    }

    kit::Phone phone;
    hosts::PhoneFileSystem real = kit::openPhone(phone.folder);
    CountedFiles counted{real};
    NotedOutcomes outcomes;
    platform::DictionaryFiles files{counted, &outcomes};
};

TEST_F(DictionaryFilesTest, readASettledFileOnceATurnAndLookAtItEachTime) {
    if (!hosts::isFileSystemOfKernel(real.root())) GTEST_SKIP() << "the file system's clock is elsewhere";
    std::this_thread::sleep_for(severalTicks);
    for (int asked = 0; asked < 10; ++asked)
        EXPECT_EQ(numberRead(), 1);
    EXPECT_EQ(counted.readings, 1);
    EXPECT_EQ(counted.looks, 9);
    files.forget();
    EXPECT_EQ(numberRead(), 1);
    EXPECT_EQ(counted.readings, 2);
}

TEST_F(DictionaryFilesTest, giveTheSameContentWithoutParsingItAgainWhileTheBytesAreThoseOfAYoungFile) {
    const auto first = files.read(settingsPath);
    EXPECT_EQ(files.read(settingsPath), first);
    put(1);
    EXPECT_EQ(files.read(settingsPath), first) << "replaced by a file that holds the same";
}

TEST_F(DictionaryFilesTest, seeAFileThatIsReplacedInTheMiddleOfATurn) {
    std::this_thread::sleep_for(severalTicks);
    EXPECT_EQ(numberRead(), 1);
    put(2);
    EXPECT_EQ(numberRead(), 2);
}

TEST_F(DictionaryFilesTest, seeAFileThatIsWrittenInPlaceInTheMiddleOfATurn) {
    std::this_thread::sleep_for(severalTicks);
    EXPECT_EQ(numberRead(), 1);
    putInPlace(2);
    EXPECT_EQ(numberRead(), 2);
}

// Within a tick of the clock, stamps tell nothing: most of these changes leave size, inode and times as they were.
TEST_F(DictionaryFilesTest, seeEveryChangeWithinOneTickOfTheClock) {
    for (int number = 1; number < 200; ++number) {
        const int written = number % 10;
        number % 3 == 0 ? put(written) : putInPlace(written);
        ASSERT_EQ(numberRead(), written);
    }
}

TEST_F(DictionaryFilesTest, readAsNothingWhatIsMissingMalformedOrNoDictionary) {
    for (const char* contents : {"", "no list", "<plist version=\"1.0\"><array/></plist>"}) {
        kit::writeText(phone.settingsFile(), contents);
        EXPECT_EQ(files.read(settingsPath), nullptr) << contents;
    }
    std::filesystem::remove(phone.settingsFile());
    EXPECT_EQ(files.read(settingsPath), nullptr);
    put(3);
    EXPECT_EQ(numberRead(), 3);
}

TEST_F(DictionaryFilesTest, makeAChangeOnWhatTheFileHoldsNow) {
    EXPECT_EQ(numberRead(), 1);
    put(5);
    files.edit(settingsPath, [](Dictionary held) {
        held.set("Seen", *held.find("Number"));
        return held;
    });
    EXPECT_EQ(Value(*files.read(settingsPath)), Value(Dictionary{{"Number", 5}, {"Seen", 5}}));
    ASSERT_EQ(outcomes.changes.size(), 1u);
    EXPECT_EQ(outcomes.changes[0].path, settingsPath);
    EXPECT_EQ(Value(outcomes.changes[0].before), Value(Dictionary{{"Number", 5}}));
    EXPECT_EQ(Value(outcomes.changes[0].after), Value(Dictionary{{"Number", 5}, {"Seen", 5}}));
}

TEST_F(DictionaryFilesTest, tellOfTheChangeAsItWasMadeLast) {
    counted.calledTwiceOn = contentOf(7);
    files.edit(settingsPath, [](Dictionary held) { return withNumber(std::move(held), 8); });
    ASSERT_EQ(outcomes.changes.size(), 1u);
    EXPECT_EQ(Value(outcomes.changes[0].before), Value(Dictionary{{"Number", 1}}));
}

TEST_F(DictionaryFilesTest, replaceNothingWhenTheFileHoldsTheNewContentAlready) {
    const auto before = real.look(settingsPath);
    files.edit(settingsPath, [](const Dictionary& held) { return held; });
    EXPECT_TRUE(real.look(settingsPath)->isSameAs(*before));
    EXPECT_EQ(outcomes.changes.size(), 1u) << "it counts as a write all the same";
}

TEST_F(DictionaryFilesTest, leaveAFileWhoseContentXmlCannotSay) {
    kit::writeText(phone.settingsFile(), kit::settingsWithNull());
    files.edit(settingsPath, [](Dictionary held) { return withNumber(std::move(held), 1); });
    EXPECT_EQ(kit::readSettings(phone), kit::settingsWithNull());
    EXPECT_THAT(outcomes.changes, IsEmpty());
    EXPECT_THAT(outcomes.tried, ElementsAre(false));
}

TEST_F(DictionaryFilesTest, tellWhyAChangeThatWasTriedDidNotComeAbout) {
    std::filesystem::remove(phone.settingsFile());
    std::filesystem::create_directories(phone.settingsFile());
    files.edit(settingsPath, [](Dictionary held) { return withNumber(std::move(held), 1); });
    EXPECT_THAT(outcomes.problems, ElementsAre(testing::HasSubstr("Is a directory")));
    EXPECT_THAT(outcomes.tried, ElementsAre(true));
}

TEST_F(DictionaryFilesTest, giveBackWhatWasReadOrWrittenLastWhenTheyForgetIt) {
    EXPECT_EQ(numberRead(), 1);
    files.edit(settingsPath, [](Dictionary held) { return withNumber(std::move(held), 2); });
    EXPECT_EQ(files.read("/missing.plist"), nullptr);
    const auto contents = files.forget();
    EXPECT_EQ(Value(*contents.at(settingsPath)), Value(Dictionary{{"Number", 2}}));
    EXPECT_EQ(contents.at("/missing.plist"), nullptr);
}

}  // namespace
