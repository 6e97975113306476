// SPDX-License-Identifier: MIT
#include "benchmarks/bench_phone.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

#include "hosts/system/file_calls.h"
#include "store/preference_store.h"

namespace benchmarks {
namespace {

class UnflushedFileCalls final : public hosts::FileCalls {
public:
    int synchronise(int) override { return 0; }
};

}  // namespace

BenchPhone::BenchPhone(std::string_view settings, Durability durability)
    : BenchPhone(std::make_unique<TemporaryFolder>(durability), durability) {
    if (!settings.empty()) _files->writeFileAtomically(trivel3::PreferenceStore::settingsFile, settings);
}

BenchPhone::BenchPhone(std::unique_ptr<TemporaryFolder> made, Durability durability)
    : BenchPhone(Existing{made->path()}, durability) {
    _made = std::move(made);
}

BenchPhone::BenchPhone(const Existing& phone, Durability durability) : _folder(phone.folder) {
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
}

std::string BenchPhone::settingsPath() const {
    return _folder + std::string(trivel3::PreferenceStore::settingsFile);
}

std::string BenchPhone::preferencesFolder() const {
    return std::filesystem::path(settingsPath()).parent_path().string();
}

}  // namespace benchmarks
