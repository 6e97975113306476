// SPDX-License-Identifier: MIT
// The machine crashes, at any moment of a write: every state in which that may leave the disk is made, none left out,
// and opened. The settings file is the old one or the new one, whole; the new one once the write has been told as done;
// and the next write works.
//
// What a crash may leave is what POSIX promises and no more, as CrashingDisk tells: what has been flushed is there; of
// all else, any part may have reached the disk and any may not, in whatever order it was done. Between two calls that
// change or flush something nothing else may be left than after the first, so it is after each of them that the states
// are made.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <set>

#include "crashing_disk.h"
#include "hosts/system/file_calls.h"
#include "settings_count.h"
#include "tests/kit/watched_calls.h"
#include "tried_table.h"
#include "write_situations.h"

namespace reliability_test {

using namespace kit;

namespace {

using testing::AnyOf;

/// The real calls. Of each that changes or flushes something the disk is told, and then `onChange` is called.
class CrashingCalls : public hosts::FileCalls {
public:
    CrashingCalls(CrashingDisk& disk, std::function<void()> onChange) : _disk(disk), _onChange(std::move(onChange)) {}

    int openIn(int folder, const char* name, int flags, mode_t mode) override {
        const int file = FileCalls::openIn(folder, name, flags, mode);
        return (flags & O_EXCL) == 0 ? file : note(file, [&] { _disk.madeFile(folder, name, file); });
    }
    ssize_t write(int file, const void* bytes, std::size_t count) override {
        const auto offset = static_cast<std::size_t>(::lseek(file, 0, SEEK_CUR));
        const ssize_t written = FileCalls::write(file, bytes, count);
        return note(written, [&] {
            _disk.wrote(file, offset, {static_cast<const char*>(bytes), static_cast<std::size_t>(written)});
        });
    }
    int synchronise(int file) override {
        return note(0, [&] { _disk.flushed(file); });
    }
    int changeMode(int file, mode_t mode) override {
        return note(FileCalls::changeMode(file, mode), [&] { _disk.changedAttributes(file); });
    }
    int changeOwner(int file, uid_t owner, gid_t group) override {
        return note(FileCalls::changeOwner(file, owner, group), [&] { _disk.changedAttributes(file); });
    }
    int makeFolder(int folder, const char* name, mode_t mode) override {
        return note(FileCalls::makeFolder(folder, name, mode), [&] { _disk.madeFolder(folder, name); });
    }
    int rename(int folder, const char* from, const char* to) override {
        return note(FileCalls::rename(folder, from, to), [&] { _disk.renamed(folder, from, to); });
    }
    int unlink(int folder, const char* name) override {
        return note(FileCalls::unlink(folder, name), [&] { _disk.unlinked(folder, name); });
    }

protected:
    static bool isFolder(int file) {
        struct stat status {};
        return ::fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
    }

private:
    template <class Number, class Change>
    Number note(Number result, Change change) {
        const int error = errno;
        if (result >= 0) {
            change();
            _onChange();
        }
        errno = error;
        return result;
    }

    CrashingDisk& _disk;
    std::function<void()> _onChange;
};

/// Tells the file's flushing, or the folder's, as done and leaves it out.
class CallsWithoutFilesFlushed final : public CrashingCalls {
public:
    using CrashingCalls::CrashingCalls;
    int synchronise(int file) override { return isFolder(file) ? CrashingCalls::synchronise(file) : 0; }
};
class CallsWithoutFoldersFlushed final : public CrashingCalls {
public:
    using CrashingCalls::CrashingCalls;
    int synchronise(int file) override { return isFolder(file) ? 0 : CrashingCalls::synchronise(file); }
};

/// Is shown a phone as a crash has left it, and whether the write had been told as done.
using Visit = std::function<void(const Phone& left, bool isDone)>;

// One write, and every state that a crash may leave on its way and after it.
template <class Calls>
void visitCrashes(const WriteSituation& situation, const Visit& visit) {
    const Phone phone;
    situation.prepare(phone);
    CrashingDisk disk(phone.folder);
    bool isDone = false;
    std::set<std::vector<CrashingDisk::Entry>> seen;
    const auto crash = [&] {
        disk.forEachState([&] {
            const auto [state, isNew] = seen.insert(disk.state());
            if (!isNew) return;
            const Phone left;
            rebuild(*state, left.folder);
            visit(left, isDone);
        });
    };
    Calls calls(disk, crash);
    auto files = openPhone(phone.folder, calls);
    crash();
    ASSERT_EQ(kit::replaceFile(files, situation.path, contentWanted()), "");
    isDone = true;
    seen.clear();
    crash();
}

// What may be lost is only what has not been told as done.
bool isWhole(const WriteSituation& situation, const std::string& found, bool isDone) {
    return found == contentWanted() || (!isDone && found == contentBefore(situation));
}

void expectNextWriteWorks(const WriteSituation& situation, const Phone& left, const std::string& attributes) {
    WatchedCalls calls;
    auto files = openPhone(left.folder, calls);
    EXPECT_EQ(kit::replaceFile(files, situation.path, settingsNumber(4)), "");
    EXPECT_EQ(readText(left / situation.file), settingsNumber(4));
    EXPECT_EQ(temporariesIn(left.folder), 0U);
    EXPECT_EQ(attributesOf(left / situation.file), attributes);
}

std::string contentOf(const Phone& phone, const WriteSituation& situation) {
    std::string content;
    return openPhone(phone.folder).readFile(situation.path, content) ? content : "(no file)";
}

TEST(CrashStates, allHoldTheOldFileOrTheNewOneAndTheNewOneOnceItIsDone) {
    TriedTable table("Every state that a crash of the machine may leave, before, during and after a write",
                     "situation");
    for (const WriteSituation& situation : writeSituations()) {
        const Phone undisturbed;
        situation.prepare(undisturbed);
        const std::string attributes = attributesWanted(situation, undisturbed);
        std::size_t states = 0;
        visitCrashes<CrashingCalls>(situation, [&](const Phone& left, bool isDone) {
            SCOPED_TRACE(situation.name + ": state " + std::to_string(states++));
            const std::string found = contentOf(left, situation);
            EXPECT_TRUE(isWhole(situation, found, isDone)) << found;
            EXPECT_THAT(attributesOf(left / situation.file), AnyOf(attributes, ""));
            const std::string before = isDone ? contentWanted() : contentBefore(situation);
            table.add(situation.name, {found == contentWanted(), settingsLost(before, contentWanted(), found)});
            expectNextWriteWorks(situation, left, attributes);
        });
        EXPECT_GT(states, 20U);
    }
    EXPECT_EQ(table.lost(), 0U);
}

// That they find what a crash can do is seen where something is not flushed.
template <class Calls>
std::pair<std::size_t, std::size_t> brokenStates(const WriteSituation& situation) {
    std::size_t onTheWay = 0;
    std::size_t whenDone = 0;
    visitCrashes<Calls>(situation, [&](const Phone& left, bool isDone) {
        if (!isWhole(situation, contentOf(left, situation), isDone)) ++(isDone ? whenDone : onTheWay);
    });
    return {onTheWay, whenDone};
}

TEST(CrashStates, showAFileThatIsRenamedBeforeItIsFlushed) {
    for (const WriteSituation& situation : writeSituations()) {
        SCOPED_TRACE(situation.name);
        const auto [onTheWay, whenDone] = brokenStates<CallsWithoutFilesFlushed>(situation);
        EXPECT_GT(onTheWay, 0U) << "cut and empty files";
        EXPECT_GT(whenDone, 0U);
    }
}

TEST(CrashStates, showAWriteThatIsToldAsDoneBeforeItsNameIsFlushed) {
    for (const WriteSituation& situation : writeSituations()) {
        SCOPED_TRACE(situation.name);
        const auto [onTheWay, whenDone] = brokenStates<CallsWithoutFoldersFlushed>(situation);
        EXPECT_EQ(onTheWay, 0U) << "the old file stands until then";
        EXPECT_GT(whenDone, 0U);
    }
}

}  // namespace
}  // namespace reliability_test
