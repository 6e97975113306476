// SPDX-License-Identifier: MIT
#include "benchmarks/bench_phone.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

#include "hosts/phones/phone_mark.h"
#include "hosts/system/file_calls.h"
#include "store/preference_store.h"

namespace benchmarks {
namespace {

class UnflushedFileCalls final : public hosts::FileCalls {
public:
    int synchronise(int) override { return 0; }
};

}  // namespace

platform::Result<platform::Stamp> CountingFileSystem::readFile(std::string_view path, std::string& contents,
                                                               std::size_t limit) const {
    auto stamp = _files.readFile(path, contents, limit);
    noteRead(path, contents);
    return stamp;
}

platform::Result<platform::Stamp> CountingFileSystem::changeFile(std::string_view path,
                                                                 const platform::Change& change) {
    ++_counts.writes;
    return _files.changeFile(path, [&](std::optional<std::string_view> held) {
        noteRead(path, held.value_or(""));
        return change(held);
    });
}

void CountingFileSystem::startCounting() {
    _isCounting = true;
    _counts = {};
    _lastRead.clear();
}

void CountingFileSystem::noteRead(std::string_view path, std::string_view contents) const {
    if (!_isCounting) return;
    ++_counts.readings;
    std::string& last = _lastRead[std::string(path)];
    if (last == contents) return;
    ++_counts.parsings;
    last = contents;
}

BenchPhone::BenchPhone(std::string_view settings, Durability durability, Changes changes)
    : BenchPhone(std::make_unique<TemporaryFolder>(durability), durability, changes) {
    if (settings.empty()) return;
    const auto made = _files->changeFile(trivel3::PreferenceStore::settingsFile,
                                         [settings = std::string(settings)](std::optional<std::string_view>) {
                                             return platform::NewContent{settings, false};
                                         });
    if (!made) throw std::runtime_error(made.error().text());
}

BenchPhone::BenchPhone(std::unique_ptr<TemporaryFolder> made, Durability durability, Changes changes)
    : BenchPhone(Existing{made->path()}, durability, changes) {
    _made = std::move(made);
}

BenchPhone::BenchPhone(const Existing& phone, Durability durability, Changes changes) : _folder(phone.folder) {
    _calls = durability == Durability::flushed ? std::make_unique<hosts::FileCalls>()
                                               : std::make_unique<UnflushedFileCalls>();
    auto files = hosts::PhoneFileSystem::open(_folder, *_calls);
    if (!files) throw std::runtime_error(files.error().text());
    _files = std::make_unique<hosts::PhoneFileSystem>(*std::move(files));
    _counting = std::make_unique<CountingFileSystem>(*_files);
    _device = std::make_unique<hosts::DeviceInformation>(*_counting, _folder);
    if (changes == Changes::areKept) {
        hosts::History history(_folder + "/state/history", _folder,
                               [this] { return hosts::phoneMark(_files->root(), *_device); });
        _history = std::make_unique<hosts::PhoneHistory>(std::move(history), _outcomes);
    }
    auto session = hosts::SettingsSession::load(
        {*_counting, _notifications, _application, *_device, _history ? &_history->recorder : nullptr, _history.get()},
        TRIVEL3_SYSTEM_IMAGE, hosts::usualDeviceShape());
    if (!session) throw std::runtime_error(session.error().text());
    _session = *std::move(session);
}

std::string BenchPhone::settingsPath() const {
    return _folder + std::string(trivel3::PreferenceStore::settingsFile);
}

std::string BenchPhone::preferencesFolder() const {
    return std::filesystem::path(settingsPath()).parent_path().string();
}

}  // namespace benchmarks
