// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/phones/phone_file_system.h"
#include "platform/services/file_listener.h"
#include "platform/services/platform.h"
#include "tests/kit/test_platform.h"

/// Programs that change integers in a settings file, each in its own way.
namespace reliability_test {

class SettingsWriter {
public:
    virtual ~SettingsWriter() = default;

    virtual void set(const std::string& key, std::int64_t value) = 0;
    /// What the file holds under the key; 0 where it holds none.
    virtual std::int64_t stored(const std::string& key) = 0;

    /// How often the file could not be read or replaced; why stands on standard error.
    std::size_t failures() const { return _failures; }

protected:
    void countFailure(const std::string& why);

private:
    std::size_t _failures = 0;
};

/// Changes them as the pane does. What is written is not flushed: whether a file outlives a power cut is not to be seen
/// by other programs, and takes most of the time.
class PaneWriter final : public SettingsWriter, private platform::FileListener {
public:
    explicit PaneWriter(const std::string& phone);

    void set(const std::string& key, std::int64_t value) override;
    std::int64_t stored(const std::string& key) override;

private:
    struct UnflushedCalls final : hosts::FileCalls {
        int synchronise(int) override { return 0; }
    };

    void passedOver(const platform::Problem&) override {}
    void changed(std::string_view, const platform::Dictionary&, const platform::Dictionary&) override {}
    void notRead(const platform::Problem& problem) override { countFailure(problem.text()); }
    void notChanged(const platform::Problem& problem, bool) override { countFailure(problem.text()); }

    UnflushedCalls _calls;
    hosts::PhoneFileSystem _files;
    kit::TestPlatform _host;
    platform::Platform _platform;
};

/// Changes them as a program does that knows of no other: it reads the file, writes a new one beside it, and renames.
class LocklessWriter final : public SettingsWriter {
public:
    /// `name` is that of no other writer.
    LocklessWriter(std::string settingsFile, const std::string& name);

    void set(const std::string& key, std::int64_t value) override;
    std::int64_t stored(const std::string& key) override;

private:
    platform::Dictionary read();

    std::string _file;
    std::string _temporary;
};

}  // namespace reliability_test
