// SPDX-License-Identifier: MIT
// Every system call of a write fails in turn, in every way, wherever a write may find the phone: the old
// file or the new one is there afterwards, whole, and the next write leaves no litter.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <set>

#include "hosts/system/error_text.h"
#include "tests/kit/watched_calls.h"
#include "tried_table.h"
#include "write_situations.h"

#include "settings_count.h"

namespace reliability_test {

using namespace kit;

namespace {

using testing::AnyOf;

constexpr int manySignals = 1000;

struct Fault {
    std::string name;
    int error;
    int times = 1;  ///< how often the call fails before it works again
};

const std::vector<Fault> faults{{"ENOSPC (disk full)", ENOSPC}, {"EDQUOT (quota used up)", EDQUOT},
                                {"EIO (device fails)", EIO},    {"EROFS (turned read-only)", EROFS},
                                {"EINTR (signal)", EINTR},      {"EINTR, 1,000 times", EINTR, manySignals}};

// Without these a write can be called done all the same. They make it tidier, or let writers take turns.
bool isDispensable(const std::string& call) {
    static const std::set<std::string> dispensable{"list", "lock", "unlink", "close"};
    return dispensable.contains(call);
}

// These are made to read the old file, which must not fail, and to tidy up.
bool isForMoreThanOneThing(const std::string& call) {
    static const std::set<std::string> several{"inspect", "status"};
    return several.contains(call);
}

// A write that has replaced the file is done, whatever becomes of the look at what stands there now.
bool isLookAfterwards(const std::vector<std::string>& calls, std::size_t number) {
    const auto renaming = std::ranges::find(calls, "rename");
    return calls[number] == "openInRoot" && renaming - calls.begin() < static_cast<std::ptrdiff_t>(number);
}

// One write of a phone in some situation, whose system calls `onCall` sees.
class TriedWrite {
public:
    TriedWrite(const WriteSituation& situation, WatchedCalls::OnCall onCall)
        : _situation(situation),
          _calls([this, onCall = std::move(onCall)](const std::string& call,
                                                    std::size_t number) { return _armed ? onCall(call, number) : 0; },
                 [this](const std::string& call, std::size_t) { _renamed = _renamed || call == "rename"; }) {
        _situation.prepare(_phone);
        _attributes = attributesWanted(_situation, _phone);
    }

    WatchedCalls& calls() { return _calls; }

    /// True when the write says that it is done.
    bool run() {
        _calls.forget();
        const auto descriptors = openDescriptors();
        _armed = true;
        const bool done = kit::replaceFile(_files, _situation.path, contentWanted()).empty();
        _armed = false;
        EXPECT_EQ(openDescriptors(), descriptors);
        return done;
    }

    TriedTable::Outcome outcome() const {
        const std::string found = readText(_phone / _situation.file);
        return {found == contentWanted(), settingsLost(contentBefore(_situation), contentWanted(), found)};
    }

    void expectWholeAndTidy(bool done) {
        const auto [isNew, lost] = outcome();
        EXPECT_EQ(lost, 0U);
        // What can fail after the renaming is only making the new name durable.
        EXPECT_EQ(isNew, done || _renamed);
        EXPECT_THAT(attributesOf(_phone / _situation.file), AnyOf(_attributes, ""));
        EXPECT_LE(temporariesIn(_phone.folder), 1U);

        EXPECT_EQ(kit::replaceFile(_files, _situation.path, settingsNumber(4)), "");
        EXPECT_EQ(readText(_phone / _situation.file), settingsNumber(4));
        EXPECT_EQ(temporariesIn(_phone.folder), 0U);
        EXPECT_EQ(attributesOf(_phone / _situation.file), _attributes);
    }

private:
    const WriteSituation& _situation;
    Phone _phone;
    bool _armed = false;
    bool _renamed = false;
    WatchedCalls _calls;
    hosts::PhoneFileSystem _files = openPhone(_phone.folder, _calls);
    std::string _attributes;
};

void tryFault(const WriteSituation& situation, const std::vector<std::string>& calls, std::size_t number,
              const Fault& fault, TriedTable& byFault, TriedTable& byCall) {
    const std::string& failing = calls[number];
    SCOPED_TRACE(situation.name + ": call " + std::to_string(number) + " (" + failing + ") meets " + fault.name);
    int times = 0;
    TriedWrite tried(situation, [&](const std::string& call, std::size_t at) {
        return at >= number && call == failing && times < fault.times ? (++times, fault.error) : 0;
    });
    const bool done = tried.run();
    if (!isForMoreThanOneThing(failing)) {
        EXPECT_EQ(done, isDispensable(failing) || isLookAfterwards(calls, number) || fault.error == EINTR);
    }
    EXPECT_EQ(times, failing == "close" ? std::min(times, fault.times) : fault.times);
    byFault.add(fault.name, tried.outcome());
    byCall.add(systemCallOf(failing), tried.outcome());
    tried.expectWholeAndTidy(done);
}

TEST(WriteFaults, atAnyCallLeaveTheOldFileOrTheNewOne) {
    // The one that is made last is printed first.
    TriedTable byCall("The same tries, by the call that failed", "call");
    TriedTable byFault("Each system call of a write failing in turn, by fault", "fault");
    for (const WriteSituation& situation : writeSituations()) {
        const auto calls = callsOfAWrite(situation);
        for (std::size_t number = 0; number < calls.size(); ++number) {
            for (const Fault& fault : faults)
                tryFault(situation, calls, number, fault, byFault, byCall);
        }
    }
    EXPECT_GT(byFault.tried(), 600U);
    EXPECT_EQ(byFault.lost(), 0U);
}

TEST(WriteFaults, ofShortWritesAreNoneUnlessNoMoreCanBeWritten) {
    TriedTable table("Writes that take a part of the bytes", "fault");
    for (const WriteSituation& situation : writeSituations()) {
        for (const std::size_t most : {1U, 7U, 100U, 1000U}) {
            SCOPED_TRACE(situation.name + ": " + std::to_string(most) + " bytes");
            TriedWrite tried(situation, [](const std::string&, std::size_t) { return 0; });
            tried.calls().setMostPerWrite(most);
            EXPECT_TRUE(tried.run());
            EXPECT_EQ(std::ranges::count(tried.calls().made(), "write"),
                      static_cast<std::ptrdiff_t>((contentWanted().size() + most - 1) / most));
            table.add("short writes", tried.outcome());
            tried.expectWholeAndTidy(true);
        }
    }
    EXPECT_EQ(table.lost(), 0U);
}

// The content is written in pieces, and any of them but the first is the last that there is room for.
TEST(WriteFaults, halfWayThroughTheContentLeaveTheOldFile) {
    constexpr std::size_t piece = 300;
    TriedTable table("The disk failing half-way through the content", "fault");
    for (const WriteSituation& situation : writeSituations()) {
        for (const int error : {ENOSPC, EDQUOT, EIO}) {
            for (std::size_t good = 1; good * piece < contentWanted().size(); ++good) {
                const std::string fault = "short write, then " + hosts::errorText(error);
                SCOPED_TRACE(situation.name + ": " + fault + " after " + std::to_string(good) + " pieces");
                std::size_t writes = 0;
                TriedWrite tried(situation, [&](const std::string& call, std::size_t) {
                    return call == "write" && writes++ == good ? error : 0;
                });
                tried.calls().setMostPerWrite(piece);
                EXPECT_FALSE(tried.run());
                EXPECT_FALSE(tried.outcome().isNew);
                table.add(fault, tried.outcome());
                tried.expectWholeAndTidy(false);
            }
        }
    }
    EXPECT_GT(table.tried(), 50U);
    EXPECT_EQ(table.lost(), 0U);
}

}  // namespace
}  // namespace reliability_test
