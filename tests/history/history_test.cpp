// SPDX-License-Identifier: MIT
#include "hosts/phones/history.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <csignal>
#include <filesystem>

#include "hosts/session/undo.h"
#include "hosts/system/state_folder.h"
#include "platform/foundation/base64.h"
#include "platform/foundation/property_list.h"
#include "tests/kit/forked.h"
#include "tests/kit/temporary_folder.h"

namespace history_test {
namespace {

namespace fs = std::filesystem;
using hosts::History;
using hosts::HistoryEntry;
using platform::Dictionary;
using platform::Value;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* place = "/mnt/phone";
constexpr const char* someFile = "/var/mobile/Library/Preferences/some.plist";

// Histories of phones in one place, in a folder of their own.
struct Histories {
    History of(const std::string& mark = "one", const std::string& where = place) const {
        return {folder(), where, [mark] { return mark; }};
    }
    std::string folder() const { return around / "state/history"; }
    // The one file there is.
    std::string file() const { return folder() + "/" + kit::namesIn(folder()).at(0); }

    kit::TemporaryFolder around;
};

HistoryEntry changeOf(const std::string& key, std::optional<Value> before, std::optional<Value> after) {
    return {.file = someFile, .key = key, .before = std::move(before), .after = std::move(after)};
}

std::uint64_t add(History history, std::vector<HistoryEntry> entries, std::uint64_t turn = 0) {
    const auto added = history.append(std::move(entries), turn);
    if (!added) throw std::runtime_error(added.error().text());
    return *added;
}

std::uint64_t addNumber(History history, int number) {
    return add(std::move(history), {changeOf("Number", number - 1, number)});
}

History::Reading readingOf(History history) {
    auto reading = history.read();
    if (!reading) throw std::runtime_error(reading.error().text());
    return *std::move(reading);
}

std::vector<std::uint64_t> numbersOf(const History::Reading& reading) {
    std::vector<std::uint64_t> numbers;
    for (const HistoryEntry& entry : reading.entries)
        numbers.push_back(entry.change);
    return numbers;
}

std::string checksummed(const std::string& line) {
    return hosts::textNumber(line) + " " + line + "\n";
}

mode_t modeOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

TEST(History, isEmptyAndMakesNothingBeforeTheFirstChange) {
    const Histories histories;
    EXPECT_THAT(readingOf(histories.of()).entries, IsEmpty());
    EXPECT_TRUE(histories.of().forget());
    EXPECT_FALSE(fs::exists(histories.around / "state"));
}

TEST(History, isForItsUsersEyesAlone) {
    const Histories histories;
    addNumber(histories.of(), 1);
    EXPECT_EQ(modeOf(histories.folder()), 0700);
    EXPECT_EQ(modeOf(histories.file()), 0600);
}

TEST(History, keepsValuesOfEveryKindAndTellsAbsentFromNull) {
    const std::vector<std::optional<Value>> values = {std::nullopt,
                                                      Value(),
                                                      true,
                                                      INT64_MIN,
                                                      UINT64_MAX,
                                                      0.1,
                                                      "text\n\"x\" \u00e9",
                                                      platform::Date{0.5},
                                                      platform::Data{std::byte{0}, std::byte{255}},
                                                      platform::Array{1, Value()},
                                                      platform::Uid{3},
                                                      Dictionary{{"key", Dictionary{{"", "a"}}}}};
    const Histories histories;
    for (const auto& before : values) {
        for (const auto& after : values)
            add(histories.of(), {changeOf("Some key", before, after)});
    }
    const auto entries = readingOf(histories.of()).entries;
    ASSERT_EQ(entries.size(), values.size() * values.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].before, values[i / values.size()]);
        EXPECT_EQ(entries[i].after, values[i % values.size()]);
    }
}

TEST(History, keepsAllElseThatIsToldOfAChange) {
    const Histories histories;
    HistoryEntry whole = changeOf("Key", std::nullopt, 1);
    whole.kept = hosts::KeptCopy{"/var/x.unread-1", true};
    HistoryEntry part = changeOf("Key", std::nullopt, 2);
    part.entry = "";
    part.madeDictionary = true;
    part.undoes = 1;
    const std::uint64_t turn = add(histories.of(), {whole, part});
    add(histories.of(), {changeOf("Other", 1, 2)}, turn);
    add(histories.of(), {changeOf("Other", 2, 3)});

    const auto entries = readingOf(histories.of()).entries;
    ASSERT_THAT(entries, SizeIs(4));
    EXPECT_EQ(entries[0].kept, whole.kept);
    EXPECT_EQ(entries[0].entry, std::nullopt);
    EXPECT_TRUE(entries[0].isUndone);
    EXPECT_EQ(entries[1].entry, "");
    EXPECT_TRUE(entries[1].madeDictionary);
    EXPECT_EQ(entries[1].undoes, 1U);
    EXPECT_EQ(entries[1].file, someFile);
    EXPECT_EQ(entries[2].turn, entries[0].turn);
    EXPECT_NE(entries[3].turn, entries[0].turn);
}

TEST(History, knowsWhatIsUndoneByUndosThatAreNotUndone) {
    const Histories histories;
    addNumber(histories.of(), 1);
    const auto undo = [&](std::uint64_t change) {
        HistoryEntry entry = changeOf("Number", 1, 0);
        entry.undoes = change;
        add(histories.of(), {entry});
        std::vector<std::uint64_t> undone;
        for (const HistoryEntry& known : readingOf(histories.of()).entries) {
            if (known.isUndone) undone.push_back(known.change);
        }
        return undone;
    };
    using Numbers = std::vector<std::uint64_t>;
    EXPECT_EQ(undo(1), (Numbers{1}));
    EXPECT_EQ(undo(2), (Numbers{2}));
    EXPECT_EQ(undo(3), (Numbers{1, 3}));
    EXPECT_EQ(undo(4), (Numbers{2, 4}));
}

TEST(History, cutAnywhereInItsLastLineReadsWithoutItAndGoesOn) {
    const Histories histories;
    addNumber(histories.of(), 1);
    const std::size_t whole = kit::readText(histories.file()).size();
    addNumber(histories.of(), 2);
    const std::string both = kit::readText(histories.file());
    for (std::size_t length = whole; length < both.size(); ++length) {
        kit::writeText(histories.file(), both.substr(0, length));
        EXPECT_EQ(numbersOf(readingOf(histories.of())), (std::vector<std::uint64_t>{1})) << length;
        addNumber(histories.of(), 3);
        const auto reading = readingOf(histories.of());
        EXPECT_EQ(numbersOf(reading), (std::vector<std::uint64_t>{1, 2})) << length;
        EXPECT_EQ(reading.entries.back().after, Value(3)) << length;
    }
}

TEST(History, damagedInALineReadsWithoutThatLine) {
    const Histories histories;
    addNumber(histories.of(), 1);
    const std::size_t first = kit::readText(histories.file()).size();
    addNumber(histories.of(), 2);
    const std::size_t second = kit::readText(histories.file()).size();
    addNumber(histories.of(), 3);
    const std::string whole = kit::readText(histories.file());
    for (std::size_t at = first; at + 1 < second; ++at) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x01);
        kit::writeText(histories.file(), damaged);
        const auto reading = readingOf(histories.of());
        EXPECT_EQ(numbersOf(reading), (std::vector<std::uint64_t>{1, 3})) << at;
        EXPECT_EQ(reading.damagedLines, 1U) << at;
    }
    kit::writeText(histories.file(), std::string(100'000, 'x'));
    EXPECT_THAT(readingOf(histories.of()).entries, IsEmpty());
    addNumber(histories.of(), 4);
    EXPECT_THAT(readingOf(histories.of()).entries, SizeIs(1));
}

TEST(History, ofANewerVersionIsNeitherReadNorWritten) {
    const Histories histories;
    addNumber(histories.of(), 1);
    const std::string newer = kit::readText(histories.file()) + checksummed("2 something else");
    kit::writeText(histories.file(), newer);
    const auto reading = histories.of().read();
    ASSERT_FALSE(reading);
    EXPECT_THAT(reading.error().text(), HasSubstr("newer version"));
    const auto added = histories.of().append({changeOf("Key", 1, 2)}, 0);
    ASSERT_FALSE(added);
    EXPECT_THAT(added.error().text(), HasSubstr("newer version"));
    EXPECT_FALSE(histories.of().forget());
    EXPECT_EQ(kit::readText(histories.file()), newer);
}

TEST(History, whosePlaceIsTakenByAnythingElseIsAProblem) {
    const Histories histories;
    addNumber(histories.of(), 1);
    const std::string path = histories.file();
    const auto isProblem = [&] {
        const auto added = histories.of().append({changeOf("Key", 1, 2)}, 0);
        return !added && !histories.of().read();
    };
    fs::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_TRUE(isProblem());
    fs::remove(path);
    fs::create_directory(path);
    EXPECT_TRUE(isProblem());
    fs::remove_all(histories.folder());
    kit::writeText(histories.folder(), "no folder");
    EXPECT_FALSE(histories.of().append({changeOf("Key", 1, 2)}, 0));
    History homeless(platform::Problem{.reason = "no home"}, place, [] { return std::string(); });
    EXPECT_FALSE(homeless.append({changeOf("Key", 1, 2)}, 0));
    EXPECT_FALSE(homeless.read());
}

TEST(History, ofTwoPhonesInOnePlaceIsToldApartAndSharesNoNumber) {
    const Histories histories;
    addNumber(histories.of("one"), 1);
    addNumber(histories.of("two"), 2);
    addNumber(histories.of("one"), 3);
    const auto one = readingOf(histories.of("one"));
    EXPECT_EQ(numbersOf(one), (std::vector<std::uint64_t>{1, 3}));
    EXPECT_EQ(one.otherPhones, (std::set<std::uint64_t>{2}));
    EXPECT_EQ(numbersOf(readingOf(histories.of("two"))), (std::vector<std::uint64_t>{2}));
    EXPECT_THAT(readingOf(histories.of("one", "/mnt/another")).entries, IsEmpty());
}

TEST(History, forgetsOnePhoneAndItsCopiesAlone) {
    const Histories histories;
    const std::string copy = histories.around / "state/kept/phone settings";
    const std::string mine = histories.around / "elsewhere";
    for (const std::string& path : {copy, mine}) {
        kit::writeText(path, "content");
        HistoryEntry entry = changeOf("Key", std::nullopt, 1);
        entry.kept = hosts::KeptCopy{path, false};
        add(histories.of("one"), {entry});
    }
    addNumber(histories.of("two"), 1);
    ASSERT_TRUE(histories.of("one").forget());
    EXPECT_THAT(readingOf(histories.of("one")).entries, IsEmpty());
    EXPECT_THAT(readingOf(histories.of("two")).entries, SizeIs(1));
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_TRUE(fs::exists(mine)) << "only what lies among the copies is ours to delete";
    ASSERT_TRUE(histories.of("two").forget());
    EXPECT_THAT(kit::namesIn(histories.folder()), IsEmpty());
}

TEST(History, keepsTheLastThousandChangesOfEachPhone) {
    const Histories histories;
    addNumber(histories.of("rare"), 1);
    History often = histories.of("often");
    std::size_t largest = 0;
    constexpr int count = 6000;
    for (int number = 1; number <= count; ++number) {
        ASSERT_TRUE(often.append({changeOf("Number", number - 1, number)}, 0));
        largest = std::max(largest, static_cast<std::size_t>(fs::file_size(histories.file())));
    }
    const auto reading = readingOf(histories.of("often"));
    ASSERT_EQ(reading.entries.size(), History::mostEntries);
    EXPECT_EQ(reading.entries.back().after, Value(count));
    EXPECT_EQ(reading.entries.front().after, Value(count + 1 - static_cast<int>(History::mostEntries)));
    EXPECT_THAT(readingOf(histories.of("rare")).entries, SizeIs(1));
    EXPECT_LT(largest, std::size_t{1} << 20);
    EXPECT_THAT(kit::namesIn(histories.folder()), SizeIs(1));
}

TEST(History, keeps64MegabytesOfAPhone) {
    const Histories histories;
    History history = histories.of();
    std::size_t largest = 0;
    for (int number = 1; number <= 40; ++number) {
        const platform::Data data(std::size_t{3} << 20, static_cast<std::byte>(number));
        ASSERT_TRUE(history.append({changeOf("Data", number - 1, Value(data))}, 0));
        largest = std::max(largest, static_cast<std::size_t>(fs::file_size(histories.file())));
    }
    EXPECT_LE(largest, std::size_t{64} << 20);
    const auto reading = readingOf(histories.of());
    EXPECT_GE(reading.entries.size(), 10U);
    EXPECT_EQ(reading.entries.back().before, Value(39));
    const platform::Data tooMuch(std::size_t{60} << 20);
    EXPECT_FALSE(history.append({changeOf("Data", 1, Value(tooMuch))}, 0));
    EXPECT_EQ(numbersOf(readingOf(histories.of())), numbersOf(reading));
}

TEST(History, isWrittenByManyProcessesAtOnce) {
    const Histories histories;
    constexpr int writers = 4;
    constexpr int changes = 200;
    std::vector<pid_t> children;
    for (int writer = 0; writer < writers; ++writer) {
        children.push_back(kit::startForked([&] {
            History history = histories.of();
            for (int number = 1; number <= changes; ++number) {
                // Another program may be held up for longer than one waits for its turn.
                while (!history.append({changeOf("Writer " + std::to_string(writer), number - 1, number)}, 0)) {
                }
            }
            return 0;
        }));
    }
    for (const pid_t child : children)
        EXPECT_EQ(kit::waitForChild(child), 0);
    const auto reading = readingOf(histories.of());
    ASSERT_EQ(reading.entries.size(), std::size_t{writers} * changes);
    EXPECT_EQ(reading.damagedLines, 0U);
    std::map<std::string, Value> last;
    for (std::size_t i = 0; i < reading.entries.size(); ++i) {
        const HistoryEntry& entry = reading.entries[i];
        EXPECT_EQ(entry.change, i + 1);
        EXPECT_EQ(last.emplace(entry.key, 0).first->second, entry.before);
        last[entry.key] = *entry.after;
    }
}

TEST(History, isReadableAfterAProcessWasKilledAtAnyMoment) {
    const Histories histories;
    const platform::Data data(std::size_t{200} << 10, std::byte{7});
    for (int round = 0; round < 40; ++round) {
        kit::SharedCounter written;
        const pid_t child = kit::startForked([&] {
            History history = histories.of();
            for (int number = 0; history.append({changeOf("Data", number, Value(data))}, 0); ++number)
                ++*written;
            *written += 1000;
            return 1;
        });
        while (*written < 1 + round % 5) {
        }
        ::kill(child, SIGKILL);
        EXPECT_EQ(kit::waitForChild(child), -SIGKILL);
        addNumber(histories.of(), round);
        const auto reading = readingOf(histories.of());
        const auto numbers = numbersOf(reading);
        EXPECT_EQ(reading.entries.back().after, Value(round));
        for (std::size_t i = 1; i < numbers.size(); ++i)
            ASSERT_EQ(numbers[i], numbers[i - 1] + 1);
    }
}

TEST(History, isInTheOrderOfTheChangesWhateverTheClockSays) {
    const Histories histories;
    addNumber(histories.of(), 1);
    // A line as of a clock that was ahead.
    HistoryEntry later = readingOf(histories.of()).entries.at(0);
    later.change = 2;
    later.time.secondsSince2001 += 1e9;
    const std::string first = kit::readText(histories.file());
    const auto record = platform::writeBinaryPropertyList(Value(hosts::recordOf(later)));
    const std::size_t number = first.rfind(" 1 ");
    std::string line = first.substr(17, number - 17) + " 2 ";
    platform::appendBase64(line, std::as_bytes(std::span(*record.bytes)));
    kit::writeText(histories.file(), first + checksummed(line));
    addNumber(histories.of(), 3);

    const auto reading = readingOf(histories.of());
    EXPECT_EQ(numbersOf(reading), (std::vector<std::uint64_t>{1, 2, 3}));
    EXPECT_GT(reading.entries[1].time.secondsSince2001, reading.entries[2].time.secondsSince2001);
    EXPECT_EQ(hosts::lastTurn(reading).at(0).change, 3U);
}

}  // namespace
}  // namespace history_test
