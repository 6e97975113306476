// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "hosts/phones/phone.h"
#include "settings_writers.h"
#include "tests/kit/child_process.h"
#include "tests/kit/ssh_host.h"

/// Programs that change the settings of a phone that is reached by its address, and look on the phone itself at what
/// has become of it.
namespace reliability_test {

class FarWriter : public SettingsWriter {
public:
    explicit FarWriter(const kit::SshHost& host) : _onPhone(host.phone().settingsFile(), "") {}
    std::int64_t stored(const std::string& key) override { return _onPhone.stored(key); }

private:
    LocklessWriter _onPhone;
};

/// Changes them as our programs do.
class OurFarWriter final : public FarWriter {
public:
    /// The port is that of the host, or of a way to it.
    OurFarWriter(const kit::SshHost& host, std::uint16_t port);
    void set(const std::string& key, std::int64_t value) override;

private:
    std::unique_ptr<hosts::Phone> _phone;
};

/// Changes them as somebody does with `sftp`: gets the file, edits it, puts it beside the old one, and renames.
class HandWriter final : public FarWriter {
public:
    HandWriter(const kit::SshHost& host, std::uint16_t port);
    void set(const std::string& key, std::int64_t value) override;

private:
    void carryOut(const std::string& commands);

    std::string _remote;
    std::string _local;
    kit::ChildProcess _sftp;
};

}  // namespace reliability_test
