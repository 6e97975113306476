// SPDX-License-Identifier: MIT
#include "hosts/phones/default_phone.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <filesystem>
#include <map>

#include "tests/kit/changed_variable.h"
#include "tests/kit/forked.h"
#include "tests/kit/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using kit::readText;
using kit::writeText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string pathWith(const char* data, const char* home) {
    const kit::ChangedVariable dataHome{"XDG_DATA_HOME", data};
    const kit::ChangedVariable homeFolder{"HOME", home};
    const auto path = hosts::defaultPhonePath();
    return path ? *path : "(none) " + path.error().text();
}

TEST(DefaultPhonePath, liesInTheUsersDataFolder) {
    EXPECT_EQ(pathWith("/data", "/home/me"), "/data/trivel3/phone");
    EXPECT_EQ(pathWith(nullptr, "/home/me"), "/home/me/.local/share/trivel3/phone");
}

TEST(DefaultPhonePath, ignoresADataFolderThatIsNotAbsolute) {
    for (const char* data : {"", "data", "./data"}) {
        EXPECT_EQ(pathWith(data, "/home/me"), "/home/me/.local/share/trivel3/phone") << data;
    }
}

TEST(DefaultPhonePath, isNotGuessed) {
    EXPECT_THAT(pathWith("data", nullptr), HasSubstr("neither XDG_DATA_HOME nor HOME"));
    EXPECT_THAT(pathWith(nullptr, "home"), HasSubstr("neither XDG_DATA_HOME nor HOME"));
}

// Every path below the folder, with what lies there.
std::map<std::string, std::string> treeOf(const std::string& folder) {
    std::map<std::string, std::string> tree;
    for (const auto& entry : fs::recursive_directory_iterator{folder}) {
        std::string& what = tree[entry.path().lexically_relative(folder)];
        if (entry.is_symlink()) {
            what = "link to " + fs::read_symlink(entry.path()).string();
        } else {
            what = entry.is_directory() ? "folder" : readText(entry.path());
        }
    }
    return tree;
}

class DefaultPhone : public testing::Test {
protected:
    void SetUp() override {
        for (int file = 0; file < 40; ++file) {
            writeText(sample + "/var/files/" + std::to_string(file),
                      std::string(5000, static_cast<char>('a' + file % 26)));
        }
        fs::create_directories(sample + "/Applications/Empty");
        fs::create_symlink("/var/files/1", sample + "/link");
        fs::create_symlink("/nowhere", sample + "/dangling");
    }

    bool ensure() {
        const auto ensured = hosts::ensurePhone(phone, sample);
        error = ensured ? "" : ensured.error().text();
        return ensured.has_value();
    }
    std::string trivel3Folder() const { return fs::path{phone}.parent_path(); }

    kit::TemporaryFolder around;
    std::string sample = around / "sample";
    std::string phone = around / "data/home/trivel3/phone";
    std::string error;
};

TEST_F(DefaultPhone, isACopyOfTheSample) {
    ASSERT_TRUE(ensure()) << error;
    EXPECT_EQ(treeOf(phone), treeOf(sample));
    EXPECT_THAT(kit::namesIn(trivel3Folder()), ElementsAre("phone"));
    EXPECT_EQ(fs::status(around / "data").permissions(), fs::perms::owner_all);
}

TEST_F(DefaultPhone, canBeChangedThoughTheSampleCannot) {
    fs::permissions(sample + "/var/files/1", fs::perms{0444});
    fs::permissions(sample + "/var/files", fs::perms{0555});
    fs::permissions(sample, fs::perms{0555});
    ASSERT_TRUE(ensure()) << error;
    EXPECT_EQ(fs::status(phone + "/var/files/1").permissions(), fs::perms{0644});
    for (const char* folder : {"", "/var", "/var/files"}) {
        EXPECT_EQ(fs::status(phone + folder).permissions() & fs::perms::owner_all, fs::perms::owner_all) << folder;
    }
    for (const char* folder : {"", "/var/files"})
        fs::permissions(sample + folder, fs::perms{0755});
}

TEST_F(DefaultPhone, isLeftAloneWhenItExists) {
    fs::create_directories(phone);
    EXPECT_TRUE(ensure()) << error;
    EXPECT_THAT(treeOf(phone), IsEmpty());
    writeText(phone + "/mine", "text");
    EXPECT_TRUE(ensure()) << error;
    EXPECT_THAT(treeOf(phone), ElementsAre(testing::Pair("mine", "text")));
}

TEST_F(DefaultPhone, mayBeALinkToAFolder) {
    fs::create_directories(around / "elsewhere");
    fs::create_directories(trivel3Folder());
    fs::create_directory_symlink(around / "elsewhere", phone);
    EXPECT_TRUE(ensure()) << error;
    EXPECT_THAT(kit::namesIn(around / "elsewhere"), IsEmpty());
}

TEST_F(DefaultPhone, isNotMadeOverSomethingElse) {
    writeText(phone, "a file");
    EXPECT_FALSE(ensure());
    EXPECT_THAT(error, HasSubstr("is not a folder"));
    EXPECT_EQ(readText(phone), "a file");
    fs::remove(phone);
    fs::create_symlink("nowhere", phone);
    EXPECT_FALSE(ensure());
    EXPECT_THAT(error, HasSubstr("is not a folder"));
    EXPECT_TRUE(fs::is_symlink(phone));
    EXPECT_THAT(kit::namesIn(trivel3Folder()), ElementsAre("phone"));
}

TEST_F(DefaultPhone, leavesNothingBehindWhenItCannotBeMade) {
    fs::remove_all(sample);
    EXPECT_FALSE(ensure());
    EXPECT_THAT(error, HasSubstr(phone));
    EXPECT_THAT(error, HasSubstr("No such file or directory"));
    EXPECT_THAT(kit::namesIn(trivel3Folder()), IsEmpty());
}

TEST_F(DefaultPhone, tellsWhichFolderAboveItCannotBeMade) {
    writeText(around / "data", "a file");
    EXPECT_FALSE(ensure());
    EXPECT_THAT(error, HasSubstr(around / "data"));
}

TEST_F(DefaultPhone, isWholeForAllWhoMakeItAtOnce) {
    const auto wanted = treeOf(sample);
    for (int round = 0; round < 10; ++round) {
        std::vector<pid_t> makers;
        for (int maker = 0; maker < 4; ++maker) {
            makers.push_back(kit::startForked([&] { return ensure() && treeOf(phone) == wanted ? 0 : 1; }));
        }
        for (const pid_t maker : makers)
            EXPECT_EQ(kit::waitForChild(maker), 0);
        EXPECT_THAT(kit::namesIn(trivel3Folder()), ElementsAre("phone"));
        fs::remove_all(phone);
    }
}

// The maker dies at the first byte of the large file that it may not write any more.
TEST_F(DefaultPhone, isMadeWholeAfterAMakerDied) {
    writeText(sample + "/var/large", std::string(100'000, 'x'));
    const int status = kit::runForked([&] {
        const rlimit limit{50'000, 50'000};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
        return ensure() ? 0 : 1;
    });
    EXPECT_EQ(status, -SIGXFSZ);
    EXPECT_FALSE(fs::exists(phone));
    EXPECT_FALSE(fs::is_empty(trivel3Folder())) << "the maker died before it began";

    ASSERT_TRUE(ensure()) << error;
    EXPECT_EQ(treeOf(phone), treeOf(sample));
    EXPECT_THAT(kit::namesIn(trivel3Folder()), ElementsAre("phone"));
}

}  // namespace
