// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "hosts/phones/file_reading.h"
#include "tests/kit/phone.h"
#include "tests/kit/timing.h"
#include "tests/kit/unix_socket.h"
#include "tests/kit/watched_calls.h"

namespace {

using namespace std::chrono_literals;
using hosts::PhoneFileSystem;
using kit::openPhone;
using kit::Phone;
using kit::timeOf;
using kit::writeText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool sanitizesAddresses = true;
#elif defined(__has_feature)
constexpr bool sanitizesAddresses = __has_feature(address_sanitizer);
#else
constexpr bool sanitizesAddresses = false;
#endif

void makeSparseFile(const std::string& path, std::uintmax_t size) {
    writeText(path, "");
    std::filesystem::resize_file(path, size);
}

TEST(PhoneReading, givesEveryByteOfTheFile) {
    const Phone phone;
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    for (const std::size_t size : {0U, 1U, 255U, 256U, 4095U, 4096U, 4097U, 100'000U}) {
        std::string text;
        while (text.size() < size)
            text += all;
        text.resize(size);
        writeText(phone / "file", text);
        std::string contents = "what was here before";
        EXPECT_TRUE(openPhone(phone.folder).readFile("/file", contents)) << size;
        EXPECT_EQ(contents, text) << size;
    }
}

TEST(PhoneReading, opensTheFileAnewEachTime) {
    const Phone phone;
    const auto files = openPhone(phone.folder);
    std::string contents;
    writeText(phone / "file", "first");
    EXPECT_TRUE(files.readFile("/file", contents));
    writeText(phone / "file", "second");
    EXPECT_TRUE(files.readFile("/file", contents));
    EXPECT_EQ(contents, "second");
}

TEST(PhoneReading, reusesTheStringsMemory) {
    const Phone phone;
    writeText(phone / "file", std::string(2000, 'x'));
    const auto files = openPhone(phone.folder);
    std::string contents;
    contents.reserve(4000);
    const char* const memory = contents.data();
    for (int round = 0; round < 3; ++round)
        EXPECT_TRUE(files.readFile("/file", contents));
    EXPECT_EQ(contents.data(), memory);
}

TEST(PhoneReading, opensOnceAsksTheDescriptorAndReadsToTheEnd) {
    const Phone phone;
    writeText(phone / "file", "text");
    kit::WatchedCalls calls;
    const auto files = openPhone(phone.folder, calls);
    calls.forget();
    std::string contents;
    EXPECT_TRUE(files.readFile("/file", contents));
    EXPECT_THAT(calls.made(), ElementsAre("openInRoot", "status", "read", "read", "close"));
}

TEST(PhoneReading, readsFilesWhoseSizeIsNotTold) {
    std::string contents;
    EXPECT_TRUE(openPhone("/proc/self").readFile("/status", contents));
    EXPECT_THAT(contents, HasSubstr("VmPeak:"));
    EXPECT_THAT(contents, HasSubstr("nonvoluntary_ctxt_switches:"));
    EXPECT_FALSE(openPhone("/proc/self").readFile("/status", contents, 100));
    EXPECT_THAT(contents, IsEmpty());
}

TEST(PhoneReading, takesAFileAsLargeAsTheLimitAndNoLarger) {
    const Phone phone;
    writeText(phone / "file", "12345");
    const auto files = openPhone(phone.folder);
    std::string contents;
    EXPECT_TRUE(files.readFile("/file", contents, 5));
    EXPECT_EQ(contents, "12345");
    EXPECT_FALSE(files.readFile("/file", contents, 4));
    EXPECT_THAT(contents, IsEmpty());
}

TEST(PhoneReading, readsLargeFilesForThoseWhoAskForThem) {
    const Phone phone;
    makeSparseFile(phone / "database", (std::uintmax_t{65} << 20));
    const auto files = openPhone(phone.folder);
    std::string contents;
    EXPECT_FALSE(files.readFile("/database", contents));
    EXPECT_TRUE(files.readFile("/database", contents, std::size_t{256} << 20));
    EXPECT_EQ(contents.size(), std::size_t{65} << 20);
}

TEST(PhoneReading, refusesHugeFilesWithoutReadingThem) {
    const Phone phone;
    for (const std::uintmax_t size : {std::uintmax_t{1} << 30, std::uintmax_t{4} << 30}) {
        makeSparseFile(phone / "huge", size);
        const auto files = openPhone(phone.folder);
        std::string contents;
        EXPECT_LT(timeOf([&] { EXPECT_FALSE(files.readFile("/huge", contents)); }), 100ms);
        EXPECT_LT(contents.capacity(), 1000U);
    }
}

TEST(PhoneReading, survivesALimitThatMemoryCannotMeet) {
    if (sanitizesAddresses) GTEST_SKIP() << "the sanitizer's allocator ends the process instead of failing";
    const Phone phone;
    makeSparseFile(phone / "huge", std::uintmax_t{1} << 43);
    std::string contents;
    EXPECT_FALSE(openPhone(phone.folder).readFile("/huge", contents, std::size_t{1} << 62));
    EXPECT_THAT(contents, IsEmpty());
}

TEST(PhoneReading, readsNothingButRegularFilesAndNeverWaits) {
    const Phone phone;
    ASSERT_EQ(::mkfifo((phone / "fifo").c_str(), 0644), 0);
    std::filesystem::create_directory(phone / "folder");
    kit::bindSocket(phone / "socket");
    const auto files = openPhone(phone.folder);
    for (const char* path : {"/fifo", "/folder", "/socket", "/missing", "/missing/file", "/", ""}) {
        std::string contents = "what was here before";
        EXPECT_FALSE(files.readFile(path, contents)) << path;
        EXPECT_THAT(contents, IsEmpty()) << path;
    }
}

TEST(PhoneReading, refusesPathsThatNoFileCanHave) {
    const Phone phone;
    writeText(phone / "file", "text");
    const auto files = openPhone(phone.folder);
    std::string contents;
    EXPECT_FALSE(files.readFile(std::string_view{"/file\0.plist", 12}, contents));
    EXPECT_FALSE(files.readFile(std::string(300, 'x'), contents));
    EXPECT_FALSE(files.readFile(std::string(5000, '/') + "file", contents));
    EXPECT_TRUE(files.readFile(std::string(4000, '/') + "file", contents));
}

TEST(PhoneReading, triesAgainWhenTheKernelCouldNotDecide) {
    const Phone phone;
    writeText(phone / "file", "text");
    std::size_t undecided = 0;
    kit::WatchedCalls calls{[&](const std::string& call, std::size_t) {
        return call == "openInRoot" && undecided > 0 && undecided-- % 2 == 0 ? EAGAIN : 0;
    }};
    const auto files = openPhone(phone.folder, calls);
    undecided = 2;
    std::string contents;
    EXPECT_TRUE(files.readFile("/file", contents));
    EXPECT_EQ(contents, "text");
}

TEST(PhoneReading, givesUpOnAKernelThatNeverDecides) {
    const Phone phone;
    writeText(phone / "file", "text");
    bool undecided = false;
    kit::WatchedCalls calls{[&](const std::string&, std::size_t) { return undecided ? EAGAIN : 0; }};
    const auto files = openPhone(phone.folder, calls);
    undecided = true;
    std::string contents;
    EXPECT_FALSE(files.readFile("/file", contents));
}

TEST(PhoneFolders, areListedByNameInByteOrder) {
    const Phone phone;
    for (const char* name : {"b", "a", "B", "\xC3\xA9", ".hidden"})
        writeText(phone / "folder/" + name, "");
    std::filesystem::create_directory(phone / "folder/inner");
    EXPECT_THAT(*openPhone(phone.folder).listFolder("/folder"),
                ElementsAre(".hidden", "B", "a", "b", "inner", "\xC3\xA9"));
}

TEST(PhoneFolders, listNothingWhereThereIsNoFolder) {
    const Phone phone;
    writeText(phone / "file", "");
    ASSERT_EQ(::mkfifo((phone / "fifo").c_str(), 0644), 0);
    const auto files = openPhone(phone.folder);
    const auto before = kit::openDescriptors();
    for (const char* path : {"/file", "/fifo", "/missing"})
        EXPECT_FALSE(files.listFolder(path)) << path;
    EXPECT_EQ(kit::openDescriptors(), before);
}

TEST(PhoneFiles, areLookedAtWithoutBeingRead) {
    const Phone phone;
    writeText(phone / "file", "four");
    std::filesystem::create_directory(phone / "folder");
    ASSERT_EQ(::mkfifo((phone / "fifo").c_str(), 0644), 0);
    const auto files = openPhone(phone.folder);
    const auto before = files.look("/file");
    ASSERT_TRUE(before);
    EXPECT_EQ(before->size, 4u);
    EXPECT_TRUE(files.look("/file")->isSameAs(*before));
    writeText(phone / "other", "four");
    EXPECT_FALSE(files.look("/other")->isSameAs(*before));
    for (const char* path : {"/folder", "/fifo", "/missing"})
        EXPECT_FALSE(files.look(path)) << path;
}

TEST(PhoneFiles, haveASettledStampOnceTheKernelsClockHasGoneOn) {
    const Phone phone;
    const auto files = openPhone(phone.folder);
    if (!hosts::isFileSystemOfKernel(files.root())) GTEST_SKIP() << "the file system's clock is elsewhere";
    std::string contents;
    const auto isSettledWhenNew = [&] {
        writeText(phone / "file", "");
        return files.readFile("/file", contents)->isSettled;
    };
    // A machine that is held up in between takes the file for an old one, but not each time.
    int tries = 0;
    while (isSettledWhenNew() && tries < 1000)
        ++tries;
    EXPECT_LT(tries, 1000);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_TRUE(files.readFile("/file", contents)->isSettled);
}

TEST(PhoneOpening, saysWhyAFolderCannotBeOpened) {
    const Phone phone;
    writeText(phone / "file", "");
    const auto problem = [](const std::string& folder) {
        const auto opened = PhoneFileSystem::open(folder);
        return opened ? std::string() : opened.error().text();
    };
    EXPECT_THAT(problem(phone / "missing"), HasSubstr("missing: No such file or directory"));
    EXPECT_THAT(problem(phone / "file"), HasSubstr("file: Not a directory"));
}

TEST(PhoneOpening, refusesAKernelThatCannotConfine) {
    const Phone phone;
    for (const int refusal : {ENOSYS, EPERM}) {
        kit::WatchedCalls calls{[=](const std::string&, std::size_t) { return refusal; }};
        const auto opened = PhoneFileSystem::open(phone.folder, calls);
        ASSERT_FALSE(opened);
        EXPECT_THAT(opened.error().text(), HasSubstr("openat2"));
    }
}

}  // namespace
