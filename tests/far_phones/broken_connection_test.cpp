// SPDX-License-Identifier: MIT
#include <algorithm>
#include <iostream>
#include <limits>
#include <map>
#include <sstream>

#include "far_phone.h"
#include "platform/foundation/property_list.h"
#include "platform/services/dictionary_files.h"
#include "tests/kit/distance.h"
#include "tests/kit/document_tables.h"
#include "tests/kit/noted_outcomes.h"

namespace far_phones_test {
namespace {

// What has come of changes over a connection that was cut.
struct Count {
    int lost = 0;
    int madeTwice = 0;
    int toldAsFailed = 0;
    int filesNotWhole = 0;
    std::map<int, int> cutQuestions;  // by the number of the question in its change
    std::map<int, int> cutAnswers;
};

/// The phone itself, through a way that breaks.
struct BrokenConnection : testing::Test {
    std::unique_ptr<hosts::Phone> open() {
        auto opened = host.openPhone(host.address(way.port()));
        opened->tell(&outcomes, false);
        return opened;
    }

    static std::int64_t numberIn(const platform::Value* value) {
        return value && value->integer() ? static_cast<std::int64_t>(value->integer()->bits) : 0;
    }

    // Adds one to the number under the key. Whether that came about.
    static bool countUp(hosts::Phone& phone, const std::string& key) {
        const auto one = [key](std::optional<std::string_view> held) -> platform::Result<platform::NewContent> {
            const auto reading = platform::readPropertyList(held.value_or(""));
            platform::Dictionary content =
                reading && reading.value->dictionary() ? *reading.value->dictionary() : platform::Dictionary();
            const auto* const before = content.find(key);
            content.set(key, platform::Value(numberIn(before) + 1));
            return platform::NewContent{*platform::writeXmlPropertyList(platform::Value(content)).bytes};
        };
        return static_cast<bool>(phone.files().changeFile(settingsPath, one));
    }

    std::unique_ptr<hosts::Phone> startCounting() {
        writeSettings(host.phone(), settingsOf({{"Count", "<integer>" + std::to_string(last) + "</integer>"}}));
        return open();
    }

    // The least of some: what a server says of itself may fall into one.
    std::uint64_t bytesOfAChange(hosts::Phone& phone) {
        std::uint64_t least = std::numeric_limits<std::uint64_t>::max();
        Count none;
        for (int changes = 0; changes < 5; ++changes) {
            const std::uint64_t before = way.bytes();
            makeChange(phone, none);
            least = std::min(least, way.bytes() - before);
        }
        return least;
    }

    // Where it was cut, and what is wrong with the file afterwards, which is counted once.
    void makeChange(hosts::Phone& phone, Count& count) {
        const int cutsBefore = way.cuts();
        const int questionsBefore = way.questions();
        if (!countUp(phone, "Count")) ++count.toldAsFailed;
        if (way.cuts() > cutsBefore) {
            const Distance::Cut cut = way.lastCut();
            ++(cut.isOfAnswer ? count.cutAnswers : count.cutQuestions)[cut.question - questionsBefore];
        }
        const auto reading = platform::readPropertyList(readSettings(host.phone()));
        if (!reading || !reading.value->dictionary()) {
            ++count.filesNotWhole;
            return;
        }
        const std::int64_t found = numberIn(reading.value->dictionary()->find("Count"));
        if (found < last + 1) ++count.lost;
        if (found > last + 1) ++count.madeTwice;
        last = found;
    }

    SshHost host;
    Distance way{host.port(), delayOfCounts()};
    NotedOutcomes outcomes;
    std::int64_t last = 100'000;  // what the number was when it was last looked at
};

void addToTables(const Count& count, unsigned changes, int cuts) {
    std::ostringstream table;
    table
        << "**Changes over a connection that is cut**\n\n| changes | cuts | lost | made twice | told as failed | files "
           "not whole |\n|--:|--:|--:|--:|--:|--:|\n| "
        << changes << " | " << cuts << " | " << count.lost << " | " << count.madeTwice << " | " << count.toldAsFailed
        << " | " << count.filesNotWhole
        << " |\n\n**Where the cuts fell**\n\n| question of a change | cut on its way there | its answer cut on the way "
           "back |\n|--:|--:|--:|\n";
    const auto times = [](const std::map<int, int>& all, int question) {
        return all.contains(question) ? all.at(question) : 0;
    };
    const int questions = std::max(count.cutQuestions.rbegin()->first, count.cutAnswers.rbegin()->first);
    for (int question = 1; question <= questions; ++question)
        table << "| " << question << " | " << times(count.cutQuestions, question) << " | "
              << times(count.cutAnswers, question) << " |\n";
    kit::addToTables(table.str() + "\n");
}

// The cuts are spread evenly over all bytes of a change, there and back, closer than its questions and answers are long
// where there are many; the last ones are left out, which may come with the next change. The number has as many digits
// before as after, and so each change as many bytes.
TEST_F(BrokenConnection, makesEachChangeOnceWhereverItIsCut) {
    const auto phone = startCounting();
    const std::uint64_t bytes = bytesOfAChange(*phone);
    const auto changes = static_cast<unsigned>(changesAsked().value_or(50));
    const unsigned betweenCuts = std::max(changes / 100, 2U);
    const unsigned cuts = changes / betweenCuts;
    Count count;
    for (unsigned made = 0; made < changes; ++made) {
        const unsigned cut = made / betweenCuts;
        if (made % betweenCuts == 0 && cut < cuts) way.cutAfter(1 + bytes * cut / cuts);
        makeChange(*phone, count);
        if (made % 1000 == 999) std::cerr << made + 1 << " changes, " << way.cuts() << " cuts" << std::endl;
    }
    EXPECT_EQ(way.cuts(), static_cast<int>(cuts));
    EXPECT_FALSE(count.cutQuestions.empty());
    EXPECT_FALSE(count.cutAnswers.empty());
    EXPECT_EQ(count.lost, 0);
    EXPECT_EQ(count.madeTwice, 0);
    EXPECT_EQ(count.toldAsFailed, 0);
    EXPECT_EQ(count.filesNotWhole, 0);
    EXPECT_EQ(temporariesIn(host.phone().folder), 0U);
    addToTables(count, changes, way.cuts());
}

// Once too often is once more to read the file; once too seldom, and the phone never knows.
TEST_F(BrokenConnection, postsAgainWhatWasCutOff) {
    const auto phone = open();
    const auto post = [&] {
        phone->notifications().postNotification(preferencesChanged);
        phone->settle();
    };
    post();
    const std::uint64_t before = way.bytes();
    post();
    const std::uint64_t bytes = way.bytes() - before;
    constexpr std::uint64_t cuts = 12;
    for (std::uint64_t cut = 0; cut < cuts; ++cut) {
        const std::size_t told = host.posted().size();
        way.cutAfter(1 + bytes * cut / cuts);
        post();
        EXPECT_GT(host.posted().size(), told) << "cut after " << 1 + bytes * cut / cuts << " bytes of " << bytes;
    }
    EXPECT_GT(way.cuts(), static_cast<int>(cuts / 2));
    EXPECT_THAT(outcomes.problems, IsEmpty());
}

TEST_F(BrokenConnection, isSaidToBeSoWhereThePhoneDoesNotComeBack) {
    writeSettings(host.phone(), settingsOf({{"Count", "<integer>1</integer>"}}));
    const auto phone = open();
    const std::string before = readSettings(host.phone());
    writeText(host.inside("authorized_keys"), "");
    way.cut();
    EXPECT_FALSE(countUp(*phone, "Count"));
    EXPECT_EQ(readSettings(host.phone()), before);
}

TEST_F(BrokenConnection, readsOnAfterItHasComeBack) {
    writeSettings(host.phone(), settingsOf({{"Count", "<integer>1</integer>"}}));
    const auto phone = open();
    for (int cuts = 0; cuts < 3; ++cuts) {
        way.cut();
        std::string contents;
        EXPECT_TRUE(phone->files().readFile(settingsPath, contents));
        EXPECT_EQ(contents, readSettings(host.phone()));
    }
}

}  // namespace
}  // namespace far_phones_test
