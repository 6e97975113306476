// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/phones/phone_file_system.h"
#include "hosts/system/file_calls.h"
#include "platform/foundation/value.h"
#include "platform/services/file_system.h"
#include "tests/kit/changed_variable.h"
#include "tests/kit/event.h"
#include "tests/kit/temporary_folder.h"

namespace kit {

/// A phone of its own: real files in a new folder, in which "/var/mobile/Library/Preferences" is
/// there and empty. It logs what is written through it and counts what is read.
class TestPhone final : public platform::FileSystem {
public:
    explicit TestPhone(EventLog& log);

    using platform::FileSystem::readFile;
    platform::Result<platform::Stamp> look(std::string_view path) const override;
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override;
    platform::Result<std::vector<std::string>> listFolder(std::string_view path) const override;
    platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change& change) override;

    /// From now on each write fails, or works again: its last step meets a read-only file system.
    void setWritesFail(bool fail) { _calls.fail = fail; }

    /// Called with the path at each reading through the platform, where it is set.
    std::function<void(std::string_view path)> onRead;

    /// How often the file was asked for through the platform since the last call.
    std::size_t takeReads(std::string_view path);

    /// What follows goes past the platform, as another process would: it is neither logged nor
    /// counted. `put` makes the folders on the way.
    void put(std::string_view path, std::string_view bytes);
    void put(std::string_view path, const platform::Dictionary& content);
    void remove(std::string_view path);
    /// Nothing when there is no regular file.
    std::optional<std::string> bytes(std::string_view path) const;
    /// Nothing when the file is missing or its root no dictionary.
    std::optional<platform::Dictionary> dictionary(std::string_view path) const;
    /// Where the phone's path lies on this machine.
    std::filesystem::path machinePath(std::string_view path) const;

private:
    /// The real calls, but for one that fails on demand and one that would only take time: whether a
    /// write outlives a power cut is not what these tests are about.
    struct Calls final : hosts::FileCalls {
        int rename(int folder, const char* from, const char* to) override;
        int synchronise(int) override { return 0; }
        bool fail = false;
    };

    EventLog& _log;
    TemporaryFolder _folder;
    ChangedVariable _state{"XDG_STATE_HOME", (_folder / ".state").c_str()};
    Calls _calls;
    hosts::PhoneFileSystem _files;
    mutable std::map<std::string, std::size_t, std::less<>> _reads;
};

}  // namespace kit
