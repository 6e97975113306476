// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "hosts/phones/device_information.h"
#include "hosts/phones/far/far_files.h"
#include "hosts/phones/far/ssh_connection.h"
#include "hosts/phones/phone.h"
#include "hosts/phones/phone_notify_center.h"

namespace hosts {

/// What a far phone tells of itself: by the list that is kept with it, its system version and, for what neither says,
/// its own programs and its SFTP server.
class FarDevice final : public platform::DeviceQuery {
public:
    /// Both outlive the object.
    FarDevice(SshConnection& connection, const FarFiles& files) : _connection(connection), _listed(files, {}) {
        _listed.readOnce();
    }

    platform::Result<platform::Done> useFile(const std::string& path) { return _listed.useFile(path); }
    std::optional<platform::Value> copyAnswer(std::string_view key) override;

private:
    std::optional<platform::Value> asked(std::string_view key);

    SshConnection& _connection;
    DeviceInformation _listed;
    std::map<std::string, std::optional<platform::Value>, std::less<>> _answers;
};

/// A phone that is reached by its address.
class SshPhone final : public Phone {
public:
    /// Connects, and asks on the terminal what ssh has to ask. A problem where that does not come about, or there is no
    /// such folder.
    static platform::Result<std::unique_ptr<Phone>> open(const SshAddress& address, const SshOptions& options,
                                                         const std::string& busModule);

    platform::FileSystem& files() override { return _files; }
    platform::DarwinNotifyCenter& notifications() override { return _notifications; }
    platform::DeviceQuery& device() override { return _device; }
    platform::Result<platform::Done> useDeviceInformation(const std::string& file) override {
        return _device.useFile(file);
    }
    void tell(PhoneListener* listener, bool tellsPassedOver) override;
    std::unique_ptr<PhoneEvents> observe(std::span<const std::string> paths,
                                         std::span<const std::string> names) override;
    void settle() override { _notifications.settle(); }
    const PhoneIdentity& identity() const override { return _identity; }
    PhonePromises promises() override;
    std::optional<double> roundTrip() override;
    std::string mark() override;

private:
    SshPhone(const SshAddress& address, const SshOptions& options, const std::string& busModule);
    bool hasNotifyutil();

    SshConnection _connection;
    PhoneIdentity _identity;
    FarFiles _files;
    PhoneNotifyCenter _notifications;
    FarDevice _device;
};

}  // namespace hosts
