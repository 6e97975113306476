// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>

#include "hosts/notifications/session_notify_center.h"
#include "hosts/phones/far/ssh_connection.h"
#include "hosts/phones/phone_listener.h"
#include "platform/services/notification_center.h"

namespace hosts {

/// The notification centre of a phone that is reached by its address: its own, by `notifyutil` or the command that the
/// user has named, and the session bus of this machine beside it.
///
/// A post is on its way when `postNotification` returns; `settle` waits for what the phone says to it. One whose answer
/// was cut off is sent again.
class FarNotifyCenter final : public platform::DarwinNotifyCenter {
public:
    /// The connection outlives the object.
    FarNotifyCenter(SshConnection& connection, const std::string& busModule)
        : _connection(connection), _bus(busModule) {}

    void tell(PhoneListener* listener) { _listener = listener; }
    void postNotification(std::string_view name) override;
    void settle();

    SessionNotifyCenter& bus() { return _bus; }
    /// False once the phone is known to have no command that posts.
    bool canPost() const { return !_isWithoutCommand; }
    /// Whether a notification that the phone tells of is the answer to a post of this object, which then is none any
    /// more.
    bool takeEcho(const std::string& name);

private:
    std::string commandFor(const std::string& name) const;
    bool sendWaiting();
    void take(const RemoteShell::Answer& answer);

    SshConnection& _connection;
    SessionNotifyCenter _bus;
    PhoneListener* _listener = nullptr;
    std::deque<std::string> _waiting;  ///< posts that the phone has not answered
    std::size_t _sent = 0;             ///< how many of them its shell has been given
    std::map<std::string, int> _echoes;
    bool _isWithoutCommand = false;
};

}  // namespace hosts
