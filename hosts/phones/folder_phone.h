// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "hosts/phones/device_information.h"
#include "hosts/phones/mount_memory.h"
#include "hosts/phones/phone.h"
#include "hosts/phones/phone_file_system.h"
#include "hosts/phones/phone_notify_center.h"

namespace hosts {

/// A phone in a folder of this machine, a mount perhaps, that stands for the root of the phone's file system. Its
/// notification centre is the user's session bus and, where the user has named one, a command of this machine.
class FolderPhone final : public Phone {
public:
    /// `busModule` is the path of the module that speaks to the session bus; `mounts` remembers the folder if it is a
    /// mount; `notify` is the command, or empty. A problem when the folder cannot be opened or was a mount before.
    static platform::Result<std::unique_ptr<Phone>> open(const std::string& folder, const std::string& busModule,
                                                         const std::optional<MountMemory>& mounts = std::nullopt,
                                                         const std::string& notify = {});

    platform::FileSystem& files() override { return _files; }
    platform::DarwinNotifyCenter& notifications() override { return _notifications; }
    platform::DeviceQuery& device() override { return _device; }
    platform::Result<platform::Done> useDeviceInformation(const std::string& file) override {
        return _device.useFile(file);
    }
    void tell(PhoneListener* listener, bool tellsPassedOver) override {
        _files.tell(listener, tellsPassedOver);
        _notifications.tell(listener);
    }
    void settle() override { _notifications.settle(); }
    std::unique_ptr<PhoneEvents> observe(std::span<const std::string> paths,
                                         std::span<const std::string> names) override;
    const PhoneIdentity& identity() const override { return _identity; }
    PhonePromises promises() override { return _files.promises(); }
    std::optional<double> roundTrip() override;
    std::string mark() override;

private:
    FolderPhone(PhoneFileSystem files, std::string folder, const std::string& busModule, const std::string& notify,
                PhoneIdentity identity);
    platform::Result<WaitingShell*> shell();

    std::string _folder;
    PhoneFileSystem _files;
    std::unique_ptr<WaitingShell> _shell;
    PhoneNotifyCenter _notifications;
    DeviceInformation _device;
    PhoneIdentity _identity;
};

}  // namespace hosts
