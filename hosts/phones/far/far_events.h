// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/phones/far/far_files.h"
#include "hosts/phones/phone.h"
#include "hosts/phones/phone_notify_center.h"
#include "hosts/system/descriptor.h"

namespace hosts {

/// What happens to a far phone: what its own centre tells of these names, by `notifyutil`, and, since what that says
/// may come late, a look at the files every two seconds. Where the phone has no such command, the session bus of this
/// machine stands in for it.
class FarEvents final : public PhoneEvents {
public:
    /// All outlive the object.
    FarEvents(SshConnection& connection, FarFiles& files, PhoneNotifyCenter& notifications,
              std::span<const std::string> paths, std::span<const std::string> names);

    int descriptor() const override { return _waiting.get(); }
    std::optional<PhoneEvent> next() override;
    const std::optional<platform::Problem>& whyNoNotifications() const override { return _noProblem; }

private:
    struct File {
        std::string path;
        std::optional<platform::Stamp> stamp;
        int looksLeft = 0;  ///< how often it is still told as changed: its time counts in whole seconds
        bool isChanged = false;
    };

    void startListening();
    void stopListening();
    void wait(int descriptor);
    void takeLines();
    void useBus();
    void look();
    std::optional<std::string> nextNotification();

    SshConnection& _connection;
    FarFiles& _files;
    PhoneNotifyCenter& _notifications;
    std::vector<File> _watched;
    std::vector<std::string> _names;
    std::vector<std::string> _told;
    std::string _text;
    std::optional<PipedProcess> _listener;
    std::unique_ptr<NotificationStream> _bus;
    std::optional<platform::Problem> _noProblem;
    unsigned _generation = 0;  ///< of the connection that is listened by
    std::optional<std::string> _untoldLoss;
    Descriptor _timer;
    Descriptor _waiting;
};

}  // namespace hosts
