// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "benchmarks/temporary_folder.h"
#include "hosts/phones/phone_file_system.h"
#include "hosts/session/composers.h"
#include "hosts/session/quiet_services.h"
#include "hosts/session/settings_session.h"

namespace benchmarks {

/// A phone's file system that counts what goes through it.
class CountingFileSystem final : public platform::FileSystem {
public:
    explicit CountingFileSystem(platform::FileSystem& files) : _files(files) {}

    using platform::FileSystem::readFile;
    bool readFile(std::string_view path, std::string& contents, std::size_t limit) const override {
        ++reads;
        return _files.readFile(path, contents, limit);
    }
    std::vector<std::string> listFolder(std::string_view path) const override { return _files.listFolder(path); }
    bool writeFileAtomically(std::string_view path, std::string_view contents) override {
        ++writes;
        return _files.writeFileAtomically(path, contents);
    }

    mutable std::size_t reads = 0;
    std::size_t writes = 0;

private:
    platform::FileSystem& _files;
};

/// A phone and a platform to run pages on it. Nobody listens to its notifications.
class BenchPhone {
public:
    /// In a temporary folder of its own, with one settings file.
    explicit BenchPhone(std::string_view settings, Durability durability = Durability::flushed);

    /// On a phone that is there, as a program that has just been started.
    struct Existing {
        std::string folder;
    };
    explicit BenchPhone(const Existing& phone, Durability durability);

    const std::string& folder() const { return _folder; }
    /// The machine's path of the settings file.
    std::string settingsPath() const;
    std::string preferencesFolder() const;

    platform::Platform& platform() { return _session->platform(); }
    CountingFileSystem& files() { return *_counting; }

private:
    BenchPhone(std::unique_ptr<TemporaryFolder> made, Durability durability);

    std::unique_ptr<TemporaryFolder> _made;  ///< null when the phone is not ours
    std::string _folder;
    std::unique_ptr<hosts::FileCalls> _calls;
    std::unique_ptr<hosts::PhoneFileSystem> _files;
    std::unique_ptr<CountingFileSystem> _counting;
    hosts::QuietNotifyCenter _notifications;
    hosts::QuietApplication _application;
    hosts::QuietDeviceQuery _deviceQuery;
    hosts::Composers _composers;
    std::unique_ptr<hosts::SettingsSession> _session;
};

}  // namespace benchmarks
