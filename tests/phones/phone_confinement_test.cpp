// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "tests/kit/phone.h"
#include "tests/kit/watched_calls.h"

namespace {

namespace fs = std::filesystem;
using kit::openPhone;
using kit::Phone;
using kit::readText;
using kit::writeText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A phone with a file outside of it that nothing may reach. Where the parameter is not 0, it is what openat2 answers
// in place of looking.
class PhoneConfinement : public testing::TestWithParam<int> {
protected:
    void SetUp() override { writeText(secret, "secret"); }

    static int refusalOf(const std::string& call) { return call == "openInRoot" ? GetParam() : 0; }

    hosts::PhoneFileSystem openFolder(const std::string& folder) { return openPhone(folder, calls); }
    hosts::PhoneFileSystem open() { return openFolder(phone.folder); }

    std::string read(std::string_view path) {
        std::string contents;
        return open().readFile(path, contents) ? contents : "(nothing)";
    }

    void expectSecretUntouched() const {
        EXPECT_EQ(readText(secret), "secret");
        EXPECT_THAT(kit::namesIn(phone.around / "outside"), ElementsAre("secret"));
    }

    Phone phone;
    std::string secret = phone.around / "outside/secret";
    kit::WatchedCalls calls{[](const std::string& call, std::size_t) { return refusalOf(call); }};
};

INSTANTIATE_TEST_SUITE_P(Looking, PhoneConfinement, testing::Values(0, ENOSYS, EPERM),
                         [](const testing::TestParamInfo<int>& refusal) {
                             if (refusal.param == 0) return "byTheKernel";
                             return refusal.param == ENOSYS ? "byHandForTheCallIsMissing" : "byHandForTheCallIsRefused";
                         });

TEST_P(PhoneConfinement, takesAbsoluteLinksFromThePhonesRoot) {
    writeText(phone / "etc/real", "inside");
    fs::create_directories(phone / "var");
    fs::create_symlink("/etc/real", phone / "var/link");
    fs::create_symlink("/etc", phone / "var/folder");
    EXPECT_EQ(read("/var/link"), "inside");
    EXPECT_EQ(read("/var/folder/real"), "inside");
    EXPECT_THAT(*open().listFolder("/var/folder"), ElementsAre("real"));
}

TEST_P(PhoneConfinement, doesNotReadAboveTheRoot) {
    fs::create_directories(phone / "a/b");
    writeText(phone / "outside/secret", "inside");
    EXPECT_EQ(read("/../outside/secret"), "inside");
    EXPECT_EQ(read("../../../outside/secret"), "inside");
    EXPECT_EQ(read("/a/b/../../../../outside/secret"), "inside");
    EXPECT_EQ(read(secret), "(nothing)");
}

TEST_P(PhoneConfinement, doesNotReadThroughLinksThatLeadOut) {
    fs::create_symlink("../outside/secret", phone / "relative");
    fs::create_symlink(secret, phone / "absolute");
    fs::create_symlink("../outside", phone / "folder");
    for (const char* path : {"/relative", "/absolute", "/folder/secret"})
        EXPECT_EQ(read(path), "(nothing)") << path;
    EXPECT_FALSE(open().listFolder("/folder"));
}

TEST_P(PhoneConfinement, followsNoMagicLinks) {
    std::string contents;
    EXPECT_FALSE(openFolder("/proc/self").readFile("/exe", contents));
    EXPECT_FALSE(openFolder("/proc/self").listFolder("/root"));
    EXPECT_FALSE(openFolder("/proc/self").listFolder("/root/"));
    const hosts::Descriptor open{::open(secret.c_str(), O_RDONLY | O_CLOEXEC)};
    EXPECT_FALSE(openFolder("/proc/self/fd").readFile("/" + std::to_string(open.get()), contents));
    EXPECT_FALSE(openFolder("/proc").readFile("/self/fd/" + std::to_string(open.get()), contents));
}

TEST_P(PhoneConfinement, readsNothingThroughALoopOfLinks) {
    fs::create_symlink("/b", phone / "a");
    fs::create_symlink("/a", phone / "b");
    EXPECT_EQ(read("/a"), "(nothing)");
}

TEST_P(PhoneConfinement, writesBelowTheRootWhateverThePathSays) {
    auto files = open();
    EXPECT_EQ(kit::replaceFile(files, "/../../outside/secret", "new"), "");
    EXPECT_EQ(readText(phone / "outside/secret"), "new");
    expectSecretUntouched();
}

TEST_P(PhoneConfinement, writesThroughFolderLinksInsideThePhone) {
    fs::create_directories(phone / "real/preferences");
    fs::create_directories(phone / "var");
    fs::create_symlink("/real/preferences", phone / "var/preferences");
    EXPECT_EQ(kit::replaceFile(open(), "/var/preferences/file", "new"), "");
    EXPECT_EQ(readText(phone / "real/preferences/file"), "new");
}

TEST_P(PhoneConfinement, doesNotWriteIntoAFolderOutside) {
    fs::create_symlink(phone.around / "outside", phone / "absolute");
    auto files = open();
    EXPECT_NE(kit::replaceFile(files, "/absolute/secret", "new"), "");
    expectSecretUntouched();
    EXPECT_TRUE(fs::is_symlink(phone / "absolute"));
}

TEST_P(PhoneConfinement, replacesALinkThatLeadsOut) {
    fs::create_symlink("../outside/secret", phone / "relative");
    fs::create_symlink(secret, phone / "absolute");
    auto files = open();
    for (const char* name : {"relative", "absolute"}) {
        EXPECT_EQ(kit::replaceFile(files, "/" + std::string{name}, "new"), "");
        EXPECT_FALSE(fs::is_symlink(phone / name));
        EXPECT_EQ(readText(phone / name), "new");
    }
    expectSecretUntouched();
}

TEST_P(PhoneConfinement, replacesTheFileThatALinkInsideLeadsTo) {
    writeText(phone / "store/file", "old");
    fs::permissions(phone / "store/file", fs::perms{0600});
    fs::create_directories(phone / "var");
    fs::create_symlink("../store/file", phone / "var/relative");
    fs::create_symlink("/store/file", phone / "var/absolute");
    fs::create_symlink("/var/relative", phone / "chain");
    auto files = open();
    for (const char* name : {"var/relative", "var/absolute", "chain"}) {
        EXPECT_EQ(kit::replaceFile(files, "/" + std::string{name}, name), "");
        EXPECT_TRUE(fs::is_symlink(phone / name));
        EXPECT_FALSE(fs::is_symlink(phone / "store/file"));
        EXPECT_EQ(readText(phone / "store/file"), name);
        EXPECT_EQ(fs::status(phone / "store/file").permissions(), fs::perms{0600});
    }
    EXPECT_THAT(kit::namesIn(phone / "store"), ElementsAre("file"));
}

// ".." after a folder link means the folder above the one that the link leads to.
TEST_P(PhoneConfinement, followsRelativeLinksFromWhereTheyReallyLie) {
    writeText(phone / "deep/target", "old");
    fs::create_directories(phone / "deep/real");
    fs::create_symlink("../target", phone / "deep/real/link");
    fs::create_directories(phone / "short");
    fs::create_symlink("/deep/real", phone / "short/cut");
    EXPECT_EQ(kit::replaceFile(open(), "/short/cut/link", "new"), "");
    EXPECT_EQ(readText(phone / "deep/target"), "new");
    EXPECT_TRUE(fs::is_symlink(phone / "deep/real/link"));
    EXPECT_THAT(kit::namesIn(phone / "short"), ElementsAre("cut"));
}

TEST_P(PhoneConfinement, keepsALinkThatCannotBeFollowed) {
    writeText(phone / "store/file", "old");
    fs::create_symlink("/store/file", phone / "link");
    bool linkRead = false;
    kit::WatchedCalls failing{[&](const std::string& call, std::size_t) {
        const int error = linkRead ? EACCES : refusalOf(call);
        linkRead = call == "readLink";
        return error;
    }};
    auto files = openPhone(phone.folder, failing);
    EXPECT_THAT(kit::replaceFile(files, "/link", "new"),
                HasSubstr("cannot follow the link that it is: Permission denied"));
    EXPECT_TRUE(fs::is_symlink(phone / "link"));
    EXPECT_EQ(readText(phone / "store/file"), "old");
}

TEST_P(PhoneConfinement, replacesLinksToAnythingButAFile) {
    fs::create_directories(phone / "folder");
    fs::create_symlink("/missing/file", phone / "dangling");
    fs::create_symlink("/folder", phone / "to-folder");
    fs::create_symlink("/loop", phone / "loop");
    fs::create_symlink("/folder/..", phone / "to-parent");
    auto files = open();
    for (const char* name : {"dangling", "to-folder", "loop", "to-parent"}) {
        EXPECT_EQ(kit::replaceFile(files, "/" + std::string{name}, name), "");
        EXPECT_FALSE(fs::is_symlink(phone / name)) << name;
        EXPECT_EQ(readText(phone / name), name);
    }
    EXPECT_FALSE(fs::exists(phone / "missing"));
    EXPECT_THAT(kit::namesIn(phone / "folder"), IsEmpty());
}

}  // namespace
