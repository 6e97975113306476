// SPDX-License-Identifier: MIT
// File systems on which no file takes another's place by renaming, on which nothing can be made durable, and on which
// no file can be given away.
#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <filesystem>

#include "mounted_phone.h"
#include "tests/kit/expectations.h"
#include "tests/kit/forked.h"
#include "tests/kit/watched_calls.h"

namespace mounts_test {

namespace {

using testing::AnyOf;
using testing::ElementsAre;

struct Replacing : MountTest {
    void mountLesser(const std::vector<std::string>& qualities) {
        mount = std::make_unique<LesserMount>(qualities);
        use(*mount);
        writeSettings(mount->behind(), manySettings());
    }

    const Phone& behind() const { return mount->behind(); }

    std::unique_ptr<Mount> mount;
};

const std::string changed = manySettingsBut({{"HotCorners", "<false/>"}});

// In a process of its own; the exit status is 0 when there was no call of that number.
int writeAndDieBefore(const std::string& folder, std::size_t fatal) {
    bool armed = false;
    std::size_t first = 0;
    WatchedCalls calls{[&](const std::string&, std::size_t number) {
        if (armed && number - first == fatal) ::raise(SIGKILL);
        return 0;
    }};
    auto files = openPhone(folder, calls);
    first = calls.made().size();
    armed = true;
    return kit::replaceFile(files, settingsPath, changed).empty() ? 0 : 1;
}

// A mount has no name for a file between the finding of the name and its opening when it is replaced just then.
TEST_F(Replacing, hidesNoSettingsFromThoseWhoReadJustThen) {
    mountLesser({});
    int missing = 0;
    WatchedCalls calls{[&](const std::string& call, std::size_t) {
        return call == "openInRoot" && missing > 0 && missing-- > 0 ? ENOENT : 0;
    }};
    auto files = openPhone(mount->folder(), calls);
    const int byEitherName = 2;
    missing = byEitherName;
    std::string found;
    EXPECT_TRUE(files.readFile(settingsPath, found));
    EXPECT_EQ(found, manySettings());
    missing = byEitherName;
    EXPECT_TRUE(files.look(settingsPath));
    EXPECT_EQ(missing, 0);
}

TEST_F(Replacing, withoutRenamingOverLeavesTheOldOrTheNewFileToReadersWhereverItStops) {
    int status = -SIGKILL;
    for (std::size_t fatal = 0; status == -SIGKILL; ++fatal) {
        SCOPED_TRACE(fatal);
        mountLesser({"no-rename-over=EPERM"});
        status = runForked([&] { return writeAndDieBefore(mount->folder(), fatal); });
        auto files = openPhone(mount->folder());
        std::string found;
        EXPECT_TRUE(files.readFile(settingsPath, found));
        EXPECT_THAT(found, AnyOf(manySettings(), changed));
        const std::string on = found == changed ? "false\n" : "true\n";
        EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, on);

        const Outcome next = ctl.run({"set", "SliderActionsVolume", "1"});
        EXPECT_EQ(next.status, 0) << next.errors;
        EXPECT_EQ(readSettings(behind()), manySettingsBut({{"HotCorners", on == "true\n" ? "<true/>" : "<false/>"},
                                                           {"SliderActionsVolume", "<integer>1</integer>"}}));
        EXPECT_THAT(namesIn(behind().preferencesFolder()), ElementsAre(settingsName));
    }
    EXPECT_EQ(status, 0);
}

// The renamings are: over the old file, which is refused; of the old file aside; of the new one into its place; and
// back.
TEST_F(Replacing, withoutRenamingOverPutsTheOldFileBackWhenTheNewOneCannotTakeItsPlace) {
    mountLesser({"no-rename-over=EPERM"});
    int renamings = 0;
    // The first is refused here as well: a mount may still take the old file for open, and gives it another name then.
    WatchedCalls calls{[&](const std::string& call, std::size_t) {
        if (call == "rename") ++renamings;
        return call != "rename" ? 0 : renamings == 1 ? EPERM : renamings == 3 ? EIO : 0;
    }};
    auto files = openPhone(mount->folder(), calls);
    EXPECT_NE(kit::replaceFile(files, settingsPath, changed), "");
    EXPECT_EQ(renamings, 4);
    EXPECT_EQ(readSettings(behind()), manySettings());
    EXPECT_THAT(namesIn(behind().preferencesFolder()), ElementsAre(settingsName));
}

TEST_F(Replacing, withAFileThatCannotBeMadeDurableFailsAndLeavesTheOldOne) {
    for (const char* quality : {"failing-fsync=EIO", "failing-fsync=ENOSPC", "failing-fsync=EROFS"}) {
        SCOPED_TRACE(quality);
        mountLesser({quality});
        expectFailure(ctl.run({"set", "HotCorners", "off"}), 1, settingsPath);
        EXPECT_EQ(readSettings(behind()), manySettings());
        EXPECT_THAT(namesIn(behind().preferencesFolder()), ElementsAre(settingsName));
    }
}

// A disk that fails is another matter than a file system to which folders are nothing to be made durable.
TEST_F(Replacing, inAFolderThatFailsToBeMadeDurableIsToldAndDone) {
    mountLesser({"failing-folder-fsync=EIO"});
    const Outcome outcome = ctl.run({"set", "HotCorners", "off"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, testing::HasSubstr("it is written, but its name may not outlast a crash"));
    EXPECT_EQ(readSettings(behind()), changed);
}

TEST_F(Replacing, whereNoFileCanBeGivenAwayKeepsAllButTheOwner) {
    mountLesser({"no-owners"});
    if (::chown(behind().settingsFile().c_str(), 501, 502) != 0) GTEST_SKIP() << "this process may not give files away";
    std::filesystem::permissions(behind().settingsFile(), std::filesystem::perms{0640});
    const Outcome outcome = ctl.run({"set", "HotCorners", "off"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(readSettings(behind()), changed);
    EXPECT_EQ(std::filesystem::status(behind().settingsFile()).permissions(), std::filesystem::perms{0640});
    EXPECT_EQ(ownerOf(behind().settingsFile()), ::geteuid());
}

}  // namespace
}  // namespace mounts_test
