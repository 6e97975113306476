// SPDX-License-Identifier: MIT
#include "hosts/phones/kept_files.h"

#include <fcntl.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <vector>

#include "hosts/system/new_file.h"
#include "hosts/system/state_folder.h"

namespace hosts {

namespace {

namespace fs = std::filesystem;
using platform::Problem;
using platform::Result;

// In coordinated universal time, so that names are in the order of time.
std::string timeText() {
    const time_t now = ::time(nullptr);
    tm parts{};
    ::gmtime_r(&now, &parts);
    std::array<char, 32> text{};
    ::strftime(text.data(), text.size(), "%Y%m%dT%H%M%SZ", &parts);
    return text.data();
}

struct Kept {
    fs::path path;
    std::uintmax_t size;
    fs::file_time_type time;
};

std::vector<Kept> keptOf(const fs::path& folder, const std::string& phone) {
    std::vector<Kept> all;
    std::error_code failure;
    for (fs::directory_iterator entry{folder, failure}, end; !failure && entry != end; entry.increment(failure)) {
        std::error_code gone;
        const Kept kept{entry->path(), entry->file_size(gone), entry->last_write_time(gone)};
        if (!gone && kept.path.filename().string().starts_with(phone)) all.push_back(kept);
    }
    std::ranges::sort(all, {}, [](const Kept& kept) { return std::pair(kept.time, kept.path); });
    return all;
}

void makeRoom(const fs::path& folder, const std::string& phone, std::uintmax_t size) {
    const std::vector<Kept> all = keptOf(folder, phone);
    std::uintmax_t used = size;
    for (const Kept& kept : all)
        used += kept.size;
    for (const Kept& kept : all) {
        if (used <= mostKeptBytes) return;
        std::error_code ignored;
        if (fs::remove(kept.path, ignored)) used -= kept.size;
    }
}

}  // namespace

Result<std::string> keepFile(const std::string& phone, std::string_view path, std::string_view contents) {
    const auto state = stateFolder();
    if (!state) return state.error();
    const std::string folder = *state + "/kept";
    // Half of the number's digits are enough among the names of one folder.
    const std::string named = phoneFileName(phone);
    const std::string owner = named.substr(0, named.size() - 8) + " ";
    makeRoom(folder, owner, contents.size());
    const std::string name = fileNameFrom(fs::path{path}.filename().string(), "file").substr(0, 100);
    auto file = NewFile::create(folder, owner + name + " " + timeText(), "");
    if (!file) return std::move(file).error();
    if (const auto written = file->write(contents); !written) return written.error();
    if (const auto kept = file->keep(); !kept) return kept.error();
    FileCalls& calls = FileCalls::system();
    const Descriptor names{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!names.isOpen() || synchroniseFolder(calls, names) == Given::failed)
        return Problem{folder, "cannot write", "it is not durable"};
    return file->path();
}

std::string freeNameBeside(FileCalls& calls, const Place& place) {
    const std::string stem = place.name.substr(0, 200) + ".unread-" + timeText();
    for (int number = 1; number <= 100; ++number) {
        const std::string name = number == 1 ? stem : stem + "-" + std::to_string(number);
        struct stat status {};
        if (uninterrupted([&] { return calls.statusIn(place.folder.get(), name.c_str(), status); }) == 0) continue;
        return errno == ENOENT ? name : std::string();
    }
    errno = EEXIST;
    return {};
}

}  // namespace hosts
