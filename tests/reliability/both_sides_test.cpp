// SPDX-License-Identifier: MIT
// A phone by its address, whose own programs change its settings while we do: how many changes are lost, of either.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <thread>
#include <utility>

#include "far_writers.h"
#include "settings_count.h"
#include "tests/kit/distance.h"
#include "tests/kit/document_tables.h"
#include "tests/kit/forked.h"

namespace reliability_test {

using namespace kit;

namespace {

using std::chrono::milliseconds;

// A tenth of the changes that other tests are asked for, since each takes many ways there and back.
std::optional<int> farChangesAsked() {
    const auto asked = changesAsked();
    return asked ? std::optional(*asked / 10) : std::nullopt;
}

// A program on the phone, a process of its own, that changes another setting now and then until it goes. It knows of
// no other program, and replaces the file in one step.
class ProgramOfThePhone {
public:
    /// It waits from nothing up to twice the pause, each as likely as the other.
    ProgramOfThePhone(const Phone& phone, milliseconds meanPause)
        : _process(startForked([this, &phone, meanPause] { return work(phone, meanPause); })) {}
    ProgramOfThePhone(const ProgramOfThePhone&) = delete;
    ProgramOfThePhone& operator=(const ProgramOfThePhone&) = delete;
    ~ProgramOfThePhone() { end(); }

    void end() {
        ++*_isOver;
        if (_process > 0) waitForChild(std::exchange(_process, -1));
    }
    int changes() const { return *_changes; }
    int lost() const { return *_lost; }

private:
    int work(const Phone& phone, milliseconds meanPause) {
        LocklessWriter writer(phone.settingsFile(), "own");
        std::minstd_rand random(7);
        std::uniform_int_distribution<milliseconds::rep> pause(0, 2 * meanPause.count());
        while (*_isOver == 0) {
            writer.set("Theirs", ++*_changes);
            std::this_thread::sleep_for(milliseconds{pause(random)});
            if (writer.stored("Theirs") != *_changes) ++*_lost;
        }
        return 0;
    }

    mutable SharedCounter _isOver;
    mutable SharedCounter _changes;
    mutable SharedCounter _lost;
    pid_t _process;
};

// What has come of our changes.
struct OurSide {
    int changes = 0;
    int lost = 0;
    int toldWrongly = 0;
};

OurSide changeAll(FarWriter& writer, int changes) {
    constexpr milliseconds longerThanTheOthersChange{20};
    OurSide side;
    for (side.changes = 1; side.changes <= changes; ++side.changes) {
        const std::size_t failures = writer.failures();
        writer.set("Ours", side.changes);
        std::this_thread::sleep_for(longerThanTheOthersChange);
        const std::int64_t found = writer.stored("Ours");
        const bool isMade = writer.failures() == failures;
        if (isMade && found != side.changes) ++side.lost;
        if (!isMade && found == side.changes) ++side.toldWrongly;
    }
    side.changes = changes;
    return side;
}

struct BothSides : testing::Test {
    BothSides() { writeSettings(host.phone(), settingsNumber(7)); }

    std::unique_ptr<FarWriter> makeWriter(bool isOurs) const {
        if (isOurs) return std::make_unique<OurFarWriter>(host, way.port());
        return std::make_unique<HandWriter>(host, way.port());
    }
    std::size_t othersLost() const {
        return settingsLost(settingsNumber(7), settingsNumber(7), readSettings(host.phone()));
    }

    SshHost host;
    Distance way{host.port(), delayOfCounts()};
};

TEST_F(BothSides, loseNothingWhileNobodyElseWrites) {
    const auto writer = makeWriter(true);
    const OurSide ours = changeAll(*writer, 20);
    EXPECT_EQ(ours.lost, 0);
    EXPECT_EQ(writer->failures(), 0U);
    EXPECT_EQ(writer->stored("Ours"), 20);
    EXPECT_EQ(othersLost(), 0U);
    EXPECT_EQ(namesIn(host.phone().preferencesFolder()), std::vector<std::string>{settingsName});
}

struct Rate {
    bool isOurs;
    milliseconds meanPause;
};

class BothSidesAtWork : public BothSides, public testing::WithParamInterface<Rate> {
protected:
    static void SetUpTestSuite() { lines.clear(); }
    static void TearDownTestSuite() {
        addToTables(
            "**A program on the phone, and one that changes the same file from afar**\n\n| from afar | the phone's "
            "pause, "
            "ms | changes from afar | lost | told as failed | changes on the phone | lost | other settings lost |\n"
            "|---|--:|--:|--:|--:|--:|--:|--:|\n" +
            lines + "\n");
    }

    static inline std::string lines;
};

// What becomes of a change that the other side does not know of is a matter of chance, and counted.
TEST_P(BothSidesAtWork, leaveAWholeFileWithAllOtherSettings) {
    const auto writer = makeWriter(GetParam().isOurs);
    const milliseconds pause = farChangesAsked() ? GetParam().meanPause : GetParam().meanPause / 50;
    ProgramOfThePhone theirs(host.phone(), pause);
    const OurSide ours = changeAll(*writer, farChangesAsked().value_or(10));
    theirs.end();
    EXPECT_EQ(othersLost(), 0U);
    EXPECT_EQ(ours.toldWrongly, 0);
    EXPECT_EQ(temporariesIn(host.phone().folder), 0U);
    std::ostringstream line;
    line << "| " << (GetParam().isOurs ? "ours" : "the same by hand") << " | " << pause.count() << " | " << ours.changes
         << " | " << ours.lost << " | " << writer->failures() << " | " << theirs.changes() << " | " << theirs.lost()
         << " | " << othersLost() << " |\n";
    lines += line.str();
}

INSTANTIATE_TEST_SUITE_P(ByRate, BothSidesAtWork,
                         testing::Values(Rate{true, milliseconds{1000}}, Rate{true, milliseconds{5000}},
                                         Rate{false, milliseconds{1000}}, Rate{false, milliseconds{5000}}),
                         [](const auto& rate) {
                             return (rate.param.isOurs ? "Ours" : "ByHand") +
                                    std::to_string(rate.param.meanPause.count());
                         });

}  // namespace
}  // namespace reliability_test
