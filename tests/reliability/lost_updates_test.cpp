// SPDX-License-Identifier: MIT
// Programs that change different settings of one file at the same time: how many of their changes are lost. Each counts
// in a setting of its own, and sees before each step whether its last one is still there.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <thread>
#include <vector>

#include "platform/foundation/property_list.h"
#include "settings_count.h"
#include "settings_writers.h"
#include "tests/kit/document_tables.h"
#include "tests/kit/forked.h"
#include "tests/kit/mount.h"
#include "tests/kit/trivel3ctl.h"

namespace reliability_test {

using namespace kit;

namespace {

using std::chrono::milliseconds;

// As many as show a loss where there is one, unless the environment asks for more.
int changesOfEach(int usual) {
    return changesAsked().value_or(usual);
}

// What processes have counted together.
struct Counts {
    SharedCounter lost;
    SharedCounter failures;
};

using MakeWriter = std::function<std::unique_ptr<SettingsWriter>()>;

// One of the programs that run at the same time.
struct Contestant {
    std::string key;
    MakeWriter make;
    Counts counts;
    pid_t process = -1;
};

// All programs on one phone, whose settings were whole when they began.
class Contest {
public:
    /// `phone` as its own side has it, and the folder where our programs find it.
    Contest(const Phone& phone, std::string folder) : _phone(phone), _folder(std::move(folder)) {
        writeSettings(_phone, settingsNumber(7));
    }

    void addOurs() {
        add([folder = _folder] { return std::make_unique<PaneWriter>(folder); });
    }
    void addOneByHand() { addLockless(_folder + settingsPath); }
    void addOneOfThePhone() { addLockless(_phone.settingsFile()); }
    // Each of their changes also sets what a page repairs when it is opened.
    void unsettle() { _unsettles = true; }

    void run(
        int changes, milliseconds pause, const std::function<void()>& meanwhile = [] {}) {
        for (const auto& contestant : _contestants)
            contestant->process = startForked([&] { return count(*contestant, changes, pause); });
        meanwhile();
        for (const auto& contestant : _contestants)
            EXPECT_EQ(waitForChild(contestant->process), 0);
        LocklessWriter reader(_phone.settingsFile(), "");
        for (const auto& contestant : _contestants) {
            if (reader.stored(contestant->key) != changes) ++*contestant->counts.lost;
        }
    }

    bool isOver() const { return *_ended == static_cast<int>(_contestants.size()); }
    int lostOf(std::size_t contestant) const { return *_contestants.at(contestant)->counts.lost; }
    int lost() const { return sum(&Counts::lost); }
    int failures() const { return sum(&Counts::failures); }

    // How many of the settings that were there before are there no more.
    std::size_t othersLost() const {
        const auto before = platform::readPropertyList(settingsNumber(7));
        const auto now = platform::readPropertyList(readSettings(_phone));
        const auto isLost = [&](const platform::Dictionary::Entry& entry) {
            return !now || !now.value->dictionary() || now.value->dictionary()->find(entry.key) == nullptr;
        };
        return static_cast<std::size_t>(std::ranges::count_if(*before.value->dictionary(), isLost));
    }

private:
    void addLockless(const std::string& file) {
        add([file, name = std::to_string(_contestants.size())] {
            return std::make_unique<LocklessWriter>(file, name);
        });
    }
    void add(MakeWriter make) {
        auto contestant = std::make_unique<Contestant>();
        contestant->key = "Counter" + std::to_string(_contestants.size());
        contestant->make = std::move(make);
        _contestants.push_back(std::move(contestant));
    }

    int count(Contestant& contestant, int changes, milliseconds pause) {
        const auto writer = contestant.make();
        ++*_ready;
        while (*_ready < static_cast<int>(_contestants.size()))
            std::this_thread::yield();
        for (int change = 1; change <= changes; ++change) {
            if (change > 1 && isLost(*writer, contestant.key, change - 1)) ++*contestant.counts.lost;
            writer->set(contestant.key, change);
            if (_unsettles) writer->set(repaired, 7);
            std::this_thread::sleep_for(pause);
        }
        *contestant.counts.failures += static_cast<int>(writer->failures());
        ++*_ended;
        return 0;
    }

    // On a mount, a look-up may find no file at the moment in which it is replaced; what is lost stays lost.
    template <class Writer>
    static bool isLost(Writer& writer, const std::string& key, int expected) {
        constexpr milliseconds longerThanAnyRenaming{100};
        if (writer.stored(key) == expected) return false;
        std::this_thread::sleep_for(longerThanAnyRenaming);
        return writer.stored(key) != expected;
    }

    int sum(SharedCounter Counts::*member) const {
        int all = 0;
        for (const auto& contestant : _contestants)
            all += *(contestant->counts.*member);
        return all;
    }

    static constexpr const char* repaired = "AccessAppSwitcher";

    const Phone& _phone;
    std::string _folder;
    bool _unsettles = false;
    std::vector<std::unique_ptr<Contestant>> _contestants;
    mutable SharedCounter _ready;
    mutable SharedCounter _ended;
};

constexpr milliseconds pauses[] = {milliseconds{0}, milliseconds{2}};

// A phone in a local folder, or one that is mounted.
class Place {
public:
    static Place local() { return Place("a local folder", nullptr); }
    static Place sshfs() { return Place("an sshfs mount", std::make_unique<SshfsMount>()); }

    const std::string& name() const { return _name; }
    const Phone& phone() const { return _mount ? _mount->behind() : *_local; }
    const std::string& folder() const { return _mount ? _mount->folder() : _local->folder; }

private:
    Place(std::string name, std::unique_ptr<SshfsMount> mount) : _name(std::move(name)), _mount(std::move(mount)) {
        if (!_mount) _local = std::make_unique<Phone>();
    }

    std::string _name;
    std::unique_ptr<SshfsMount> _mount;
    std::unique_ptr<Phone> _local;
};

class LostUpdates : public testing::Test {
protected:
    static void SetUpTestSuite() { lines.clear(); }
    static void TearDownTestSuite() {
        if (lines.empty()) return;
        addToTables(
            "**Programs of ours that change different settings at the same time**\n\n| where | programs | changes of "
            "each | pause, ms | changes lost | other settings lost |\n|---|---|--:|--:|--:|--:|\n" +
            lines + "\n");
    }

    static void addLine(const std::string& where, const std::string& programs, int changes, milliseconds pause,
                        const Contest& contest) {
        std::ostringstream line;
        line << "| " << where << " | " << programs << " | " << changes << " | " << pause.count() << " | "
             << contest.lost() << " | " << contest.othersLost() << " |\n";
        lines += line.str();
    }

    static void expectNothingLost(const Place& place, int programs, int changes) {
        for (const milliseconds pause : pauses) {
            SCOPED_TRACE(place.name() + ", " + std::to_string(pause.count()) + " ms");
            Contest contest(place.phone(), place.folder());
            for (int i = 0; i < programs; ++i)
                contest.addOurs();
            contest.run(changes, pause);
            EXPECT_EQ(contest.lost(), 0);
            EXPECT_EQ(contest.othersLost(), 0U);
            EXPECT_EQ(contest.failures(), 0);
            EXPECT_EQ(namesIn(place.phone().preferencesFolder()), std::vector<std::string>{settingsName});
            addLine(place.name(), std::to_string(programs), changes, pause, contest);
        }
    }

    // Opens the page again and again, as somebody does who only looks; it writes its repairs.
    static void lookUntilOver(RunningTrivel3ctl& program, const Contest& contest) {
        while (!contest.isOver()) {
            for (const json& command : {json{{"do", "tap"}, {"row", "Advanced Options"}}, json{{"do", "back"}}}) {
                program.send(command.dump() + "\n");
                const auto answer = program.readLine();
                ASSERT_TRUE(answer.has_value());
                EXPECT_EQ(json::parse(*answer).at("ok"), true) << *answer;
            }
        }
    }

    static void expectNothingLostToOneThatLooks(const Place& place, int changes) {
        for (const milliseconds pause : pauses) {
            SCOPED_TRACE(place.name() + ", " + std::to_string(pause.count()) + " ms");
            Trivel3ctl ctl;
            ctl.usePhone(place.folder());
            Contest contest(place.phone(), place.folder());
            contest.addOurs();
            contest.unsettle();
            RunningTrivel3ctl looker(ctl, {"drive"});
            contest.run(changes, pause, [&] { lookUntilOver(looker, contest); });
            EXPECT_EQ(looker.finish().status, 0);
            EXPECT_EQ(contest.lost(), 0);
            EXPECT_EQ(contest.othersLost(), 0U);
            EXPECT_EQ(contest.failures(), 0);
            addLine(place.name(), "1, and one that looks", changes, pause, contest);
        }
    }

private:
    static inline std::string lines;
};

TEST_F(LostUpdates, areNoneAmongTwoOfOurPrograms) {
    expectNothingLost(Place::local(), 2, changesOfEach(300));
}

TEST_F(LostUpdates, areNoneAmongFourOfOurPrograms) {
    expectNothingLost(Place::local(), 4, changesOfEach(150));
}

TEST_F(LostUpdates, areNoneBesideOneThatOnlyLooks) {
    expectNothingLostToOneThatLooks(Place::local(), changesOfEach(150));
}

TEST_F(LostUpdates, areNoneOnAMount) {
    if (!whyNoMounts().empty()) GTEST_SKIP() << whyNoMounts();
    expectNothingLost(Place::sshfs(), 2, changesOfEach(60));
    expectNothingLost(Place::sshfs(), 4, changesOfEach(30));
    expectNothingLostToOneThatLooks(Place::sshfs(), changesOfEach(30));
}

// A program of the phone's own that knows no lock, beside one of ours and, for comparison, beside one in its place that
// is like the phone's.
class LocklessNeighbour : public testing::Test {
protected:
    static void addTitle() {
        addToTables(
            "**A program of the phone that knows no lock, and one beside it**\n\n| where | beside it | changes of each "
            "| pause, ms "
            "| its changes lost | the other's changes lost | other settings lost |\n|---|---|--:|--:|--:|--:|--:|\n");
    }

    static void contend(const Place& place, bool withOurs, int changes, milliseconds pause) {
        SCOPED_TRACE(place.name() + ", " + std::to_string(pause.count()) + " ms");
        Contest contest(place.phone(), place.folder());
        contest.addOneOfThePhone();
        withOurs ? contest.addOurs() : contest.addOneByHand();
        contest.run(changes, pause);
        if (withOurs) {
            EXPECT_EQ(contest.othersLost(), 0U);
            EXPECT_EQ(contest.failures(), 0);
        }
        std::ostringstream line;
        line << "| " << place.name() << " | " << (withOurs ? "ours" : "the same by hand") << " | " << changes << " | "
             << pause.count() << " | " << contest.lostOf(0) << " | " << contest.lostOf(1) << " | "
             << contest.othersLost() << " |\n";
        addToTables(line.str());
    }

    static void contendEverywhere(int changes) {
        for (const bool withOurs : {true, false}) {
            for (const milliseconds pause : pauses) {
                contend(Place::local(), withOurs, changes, pause);
                if (whyNoMounts().empty()) contend(Place::sshfs(), withOurs, changes, pause);
            }
        }
    }
};

TEST_F(LocklessNeighbour, losesNoOtherSetting) {
    addTitle();
    contendEverywhere(changesOfEach(100));
    addToTables("\n");
}

}  // namespace
}  // namespace reliability_test
