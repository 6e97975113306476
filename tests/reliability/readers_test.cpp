// SPDX-License-Identifier: MIT
// Two processes write one settings file 100,000 times while others read it without pause.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "settings_count.h"
#include "tests/kit/document_tables.h"
#include "tests/kit/forked.h"
#include "tests/kit/phone.h"
#include "tried_table.h"

namespace reliability_test {

using namespace kit;

namespace {

using kit::SharedCounter;

constexpr int writers = 2;
constexpr int writesPerWriter = 50'000;
constexpr int readers = 4;
constexpr int contentsPerWriter = 6;

// Whether a file outlives a power cut is not to be seen by other processes, and takes most of the time.
struct UnflushedCalls final : hosts::FileCalls {
    int synchronise(int) override { return 0; }
};

// Each has a length of its own, so that a mixture of two would show.
std::string contentOf(int writer, int write) {
    int number = 3 + writer;
    for (int i = 0; i < write % contentsPerWriter; ++i)
        number *= 10;
    return settingsNumber(number);
}

std::set<std::string> allContents() {
    std::set<std::string> contents;
    for (int writer = 0; writer < writers; ++writer) {
        for (int write = 0; write < contentsPerWriter; ++write)
            contents.insert(contentOf(writer, write));
    }
    return contents;
}

int writeAll(const Phone& phone, int writer) {
    std::vector<std::string> contents;
    for (int write = 0; write < contentsPerWriter; ++write)
        contents.push_back(contentOf(writer, write));
    UnflushedCalls calls;
    auto files = openPhone(phone.folder, calls);
    for (std::size_t write = 0; write < writesPerWriter; ++write) {
        if (!kit::replaceFile(files, settingsPath, contents[write % contents.size()]).empty()) return 1;
    }
    return 0;
}

struct Readings {
    SharedCounter done;
    SharedCounter broken;
    SharedCounter over;
};

// Every other reader reads as the pane does; the rest as a program that knows nothing of it.
int readAll(const Phone& phone, int reader, Readings& readings) {
    const auto whole = allContents();
    auto files = openPhone(phone.folder);
    std::string found;
    while (*readings.over == 0) {
        if (reader % 2 == 1) {
            found = readText(phone.settingsFile());
        } else if (!files.readFile(settingsPath, found)) {
            found = "(not read)";
        }
        ++*readings.done;
        if (!whole.contains(found)) ++*readings.broken;
    }
    return 0;
}

void addFigures(Readings& readings) {
    kit::addToTables(
        "**Readers while others write**\n\n"
        "| writers | readers | writes | readings | partial, empty or missing files |\n|--:|--:|--:|--:|--:|\n| " +
        std::to_string(writers) + " | " + std::to_string(readers) + " | " + std::to_string(writers * writesPerWriter) +
        " | " + std::to_string(*readings.done) + " | " + std::to_string(*readings.broken) + " |\n\n");
}

TEST(Readers, neverSeePartOfAFileWhileOthersWriteIt) {
    const Phone phone;
    writeText(phone.settingsFile(), contentOf(0, 0));
    Readings readings;
    std::vector<pid_t> reading;
    std::vector<pid_t> writing;
    for (int reader = 0; reader < readers; ++reader)
        reading.push_back(startForked([&] { return readAll(phone, reader, readings); }));
    for (int writer = 0; writer < writers; ++writer)
        writing.push_back(startForked([&] { return writeAll(phone, writer); }));
    for (const pid_t writer : writing)
        EXPECT_EQ(waitForChild(writer), 0);
    *readings.over = 1;
    for (const pid_t reader : reading)
        EXPECT_EQ(waitForChild(reader), 0);

    EXPECT_EQ(*readings.broken, 0);
    EXPECT_GT(*readings.done, 1000);
    EXPECT_EQ(namesIn(phone.preferencesFolder()), std::vector<std::string>{settingsName});
    EXPECT_TRUE(allContents().contains(readText(phone.settingsFile())));
    addFigures(readings);
}

}  // namespace
}  // namespace reliability_test
