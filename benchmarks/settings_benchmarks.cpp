// SPDX-License-Identifier: MIT
// The store's read rule and write rule, beside the bare system calls on the same file and beside
// libplist doing the same job.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <plist/plist.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "benchmarks/bench_phone.h"
#include "benchmarks/benchmark_set.h"
#include "benchmarks/ratio_reporter.h"
#include "benchmarks/sample_settings.h"
#include "platform/foundation/property_list.h"
#include "store/preference_store.h"

namespace benchmarks {
namespace {

constexpr const char* key = "QuickSwitcher";

// Room for either settings file, and touched before anything is measured.
std::vector<char>& buffer() {
    static std::vector<char> bytes(std::size_t{4} << 20, 'x');
    return bytes;
}

std::size_t readBare(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const ssize_t count = ::read(file, buffer().data(), buffer().size());
    ::close(file);
    return static_cast<std::size_t>(count);
}

void readOurs(benchmark::State& state, const std::string& content) {
    BenchPhone phone(content);
    const trivel3::PreferenceStore store(phone.platform());
    for (auto _ : state)
        benchmark::DoNotOptimize(store.preferenceForKey(key));
}

void readBareCalls(benchmark::State& state, const std::string& content) {
    BenchPhone phone(content);
    const std::string path = phone.settingsPath();
    for (auto _ : state)
        benchmark::DoNotOptimize(readBare(path));
}

bool readWithLibplist(const std::string& path) {
    const std::size_t count = readBare(path);
    plist_t root = nullptr;
    plist_from_memory(buffer().data(), static_cast<std::uint32_t>(count), &root);
    std::uint8_t flag = 0;
    plist_get_bool_val(plist_dict_get_item(root, key), &flag);
    plist_free(root);
    return flag != 0;
}

void readLibplist(benchmark::State& state, const std::string& content) {
    BenchPhone phone(content);
    const std::string path = phone.settingsPath();
    if (!readWithLibplist(path)) return state.SkipWithError("libplist does not find the key");
    for (auto _ : state)
        benchmark::DoNotOptimize(readWithLibplist(path));
}

void writeOurs(benchmark::State& state, const std::string& content, Durability durability,
               Changes changes = Changes::areForgotten) {
    BenchPhone phone(content, durability, changes);
    trivel3::PreferenceStore store(phone.platform());
    bool flag = false;
    for (auto _ : state)
        store.setPreferenceForKey(flag = !flag, key);
}

enum class Flush { nothing, file, fileAndFolder };

// The same bytes into a temporary file, flushed and renamed: the least that an atomic write is.
void writeBare(benchmark::State& state, const std::string& content, Flush flush) {
    BenchPhone phone(content, flush == Flush::nothing ? Durability::inMemory : Durability::flushed);
    const std::string path = phone.settingsPath();
    const std::string temporary = path + ".tmp";
    const int folder = ::open(phone.preferencesFolder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (auto _ : state) {
        const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        bool written = ::write(file, content.data(), content.size()) == static_cast<ssize_t>(content.size());
        if (flush != Flush::nothing) written = ::fsync(file) == 0 && written;
        ::close(file);
        written = ::rename(temporary.c_str(), path.c_str()) == 0 && written;
        if (flush == Flush::fileAndFolder) written = ::fsync(folder) == 0 && written;
        if (!written) state.SkipWithError("the file cannot be written");
    }
    ::close(folder);
}

void addReads(const SampleSettings& settings, const char* encoding, const std::string& content, double bareReach,
              double libplistReach) {
    const std::string job = std::string("read one key, ") + settings.name + " " + encoding;
    add(job + "/ours", [&content](benchmark::State& state) { readOurs(state, content); });
    add(job + "/open+read+close", [&content](benchmark::State& state) { readBareCalls(state, content); });
    add(job + "/libplist", [&content](benchmark::State& state) { readLibplist(state, content); });
    if (bareReach > 0) reaches().push_back({job, "open+read+close", bareReach});
    if (libplistReach > 0) reaches().push_back({job, "libplist", libplistReach});
}

void addWrites(const SampleSettings& settings, const char* encoding, const std::string& content) {
    const std::string job = std::string("write one key, ") + settings.name + " " + encoding;
    add(job + "/ours", [&content](benchmark::State& state) { writeOurs(state, content, Durability::flushed); });
    add(job + "/temp+fsync+rename",
        [&settings](benchmark::State& state) { writeBare(state, settings.xml, Flush::file); });
    add(job + "/temp+fsync+rename+folder fsync",
        [&settings](benchmark::State& state) { writeBare(state, settings.xml, Flush::fileAndFolder); });
    reaches().push_back({job, "temp+fsync+rename", 1.2});
    const std::string unflushed = job + ", no flush";
    add(unflushed + "/ours", [&content](benchmark::State& state) { writeOurs(state, content, Durability::inMemory); });
    add(unflushed + "/temp+rename",
        [&settings](benchmark::State& state) { writeBare(state, settings.xml, Flush::nothing); });
}

void addKeptChanges(const SampleSettings& settings) {
    const std::string job = std::string("change one key and keep the change, ") + settings.name;
    const auto write = [&settings](Changes changes) {
        return [&settings, changes](benchmark::State& state) {
            writeOurs(state, settings.xml, Durability::flushed, changes);
        };
    };
    add(job + "/ours", write(Changes::areKept));
    add(job + "/without history", write(Changes::areForgotten));
    reaches().push_back({job, "without history", 1.2});
}

}  // namespace

void addSettingsBenchmarks() {
    addReads(smallSettings(), "XML", smallSettings().xml, 1.7, 1.0 / 3);
    addReads(smallSettings(), "binary", smallSettings().binary, 1.7, 1.0 / 3);
    addReads(largeSettings(), "XML", largeSettings().xml, 0, 1.0 / 10);
    addReads(largeSettings(), "binary", largeSettings().binary, 0, 0);
    addWrites(smallSettings(), "XML", smallSettings().xml);
    addWrites(smallSettings(), "binary", smallSettings().binary);
    addWrites(largeSettings(), "XML", largeSettings().xml);
    addWrites(largeSettings(), "binary", largeSettings().binary);
    addKeptChanges(smallSettings());
    addKeptChanges(largeSettings());
}

}  // namespace benchmarks
