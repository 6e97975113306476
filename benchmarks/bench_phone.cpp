// SPDX-License-Identifier: MIT
#include "benchmarks/bench_phone.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "hosts/linux/file_calls.h"
#include "store/preference_store.h"

namespace benchmarks {
namespace {

class UnflushedFileCalls final : public hosts::FileCalls {
public:
    int synchronise(int) override { return 0; }
};

// Without flushing, what is measured is our own work, so the folder is kept in memory where the
// machine has such a file system: a disk's own would flush a file that is renamed over another.
std::string makeTemporaryFolder(Durability durability) {
    const std::filesystem::path memory = "/dev/shm";
    const bool inMemory = durability == Durability::inMemory && std::filesystem::is_directory(memory);
    const std::filesystem::path parent = inMemory ? memory : std::filesystem::temp_directory_path();
    std::string folder = (parent / "trivel3-benchmark-XXXXXX").string();
    if (!::mkdtemp(folder.data())) throw std::runtime_error(folder + ": cannot be made");
    return folder;
}

}  // namespace

BenchPhone::BenchPhone(std::string_view settings, Durability durability) : _folder(makeTemporaryFolder(durability)) {
    _calls = durability == Durability::flushed ? std::make_unique<hosts::FileCalls>()
                                               : std::make_unique<UnflushedFileCalls>();
    std::string error;
    auto files = hosts::PhoneFileSystem::open(_folder, error, *_calls);
    if (!files) throw std::runtime_error(error);
    _files = std::make_unique<hosts::PhoneFileSystem>(*std::move(files));
    _counting = std::make_unique<CountingFileSystem>(*_files);
    _session = std::make_unique<hosts::SettingsSession>(
        hosts::SessionServices{*_counting, _notifications, _application, _deviceQuery, _composers, _composers},
        TRIVEL3_STAGING "/lib/trivel3/system", hosts::usualDeviceShape());
    if (!_session->loadPane(error)) throw std::runtime_error(error);
    if (!settings.empty()) _files->writeFileAtomically(trivel3::PreferenceStore::settingsFile, settings);
}

BenchPhone::~BenchPhone() {
    std::error_code ignored;
    std::filesystem::remove_all(_folder, ignored);
}

std::string BenchPhone::settingsPath() const {
    return _folder + std::string(trivel3::PreferenceStore::settingsFile);
}

std::string BenchPhone::preferencesFolder() const {
    return std::filesystem::path(settingsPath()).parent_path().string();
}

}  // namespace benchmarks
