// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "benchmarks/temporary_folder.h"
#include "hosts/phones/device_information.h"
#include "hosts/phones/phone_file_system.h"
#include "hosts/session/services.h"
#include "hosts/session/settings_session.h"

namespace benchmarks {

/// A phone's file system that counts what goes through it, from when it is told to: what a count needs to remember
/// would be measured with everything else.
class CountingFileSystem final : public platform::FileSystem {
public:
    explicit CountingFileSystem(platform::FileSystem& files) : _files(files) {}

    using platform::FileSystem::readFile;
    platform::Result<platform::Stamp> look(std::string_view path) const override {
        ++_counts.looks;
        return _files.look(path);
    }
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override;
    platform::Result<std::vector<std::string>> listFolder(std::string_view path) const override {
        return _files.listFolder(path);
    }
    platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change& change) override;

    struct Counts {
        std::size_t looks = 0;     ///< questions for a file's stamp alone
        std::size_t readings = 0;  ///< those for a change included
        std::size_t parsings = 0;  ///< readings that gave something else than the one before
        std::size_t writes = 0;
    };
    /// All since this was last called.
    void startCounting();
    const Counts& counts() const { return _counts; }

private:
    void noteRead(std::string_view path, std::string_view contents) const;

    platform::FileSystem& _files;
    bool _isCounting = false;
    mutable Counts _counts;
    mutable std::map<std::string, std::string, std::less<>> _lastRead;
};

/// Whether what is changed on a phone is kept, as the programs keep it.
enum class Changes { areForgotten, areKept };

/// A phone and a platform to run pages on it. Nobody listens to its notifications.
class BenchPhone {
public:
    /// In a temporary folder of its own, with one settings file.
    explicit BenchPhone(std::string_view settings, Durability durability = Durability::flushed,
                        Changes changes = Changes::areForgotten);

    /// On a phone that is there, as a program that has just been started.
    struct Existing {
        std::string folder;
    };
    explicit BenchPhone(const Existing& phone, Durability durability, Changes changes = Changes::areForgotten);

    const std::string& folder() const { return _folder; }
    /// The machine's path of the settings file.
    std::string settingsPath() const;
    std::string preferencesFolder() const;

    platform::Platform& platform() { return _session->platform(); }
    CountingFileSystem& files() { return *_counting; }

    /// What follows is another turn.
    void drawn() { _session->drawn(); }

private:
    BenchPhone(std::unique_ptr<TemporaryFolder> made, Durability durability, Changes changes);

    std::unique_ptr<TemporaryFolder> _made;  ///< null when the phone is not ours
    std::string _folder;
    std::unique_ptr<hosts::FileCalls> _calls;
    std::unique_ptr<hosts::PhoneFileSystem> _files;
    std::unique_ptr<CountingFileSystem> _counting;
    hosts::QuietNotifyCenter _notifications;
    hosts::QuietApplication _application;
    std::unique_ptr<hosts::DeviceInformation> _device;
    hosts::Outcomes _outcomes{"benchmarks", false};
    std::unique_ptr<hosts::PhoneHistory> _history;
    std::unique_ptr<hosts::SettingsSession> _session;
};

}  // namespace benchmarks
