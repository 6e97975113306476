// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "hosts/notifications/session_notify_center.h"
#include "hosts/phones/phone_listener.h"
#include "hosts/phones/waiting_shell.h"
#include "platform/services/notification_center.h"

namespace hosts {

/// The notification centre of a phone: its own, by a command, and the session bus of this machine beside it.
///
/// A post is on its way when `postNotification` returns; `settle` waits for what the phone says to it. One whose answer
/// was cut off is sent again.
class PhoneNotifyCenter final : public platform::DarwinNotifyCenter {
public:
    /// Where the command runs, which may have to be reached anew. The pointer is good until this is next called.
    using Shell = std::function<platform::Result<WaitingShell*>()>;
    struct Command {
        std::string text;      ///< for the shell, which is given the notification's name behind it; empty for none
        bool isUsers = false;  ///< whether the user has named it, so that it is to be there
    };

    PhoneNotifyCenter(const std::string& busModule, Shell shell, Command command)
        : _bus(busModule), _shell(std::move(shell)), _command(std::move(command)) {}

    void tell(PhoneListener* listener) { _listener = listener; }
    void postNotification(std::string_view name) override;
    void settle();

    SessionNotifyCenter& bus() { return _bus; }
    /// False once the phone is known to have no command that posts.
    bool canPost() const { return !_command.text.empty(); }
    /// Whether a notification that the phone tells of may be the answer to a post of this object, which then is none
    /// any more. It may stand for a post of another program as well, since a phone tells of several at once as of one.
    bool takeEcho(const std::string& name);

private:
    std::string commandFor(const std::string& name) const;
    bool sendWaiting();
    void take(const WaitingShell::Answer& answer);

    SessionNotifyCenter _bus;
    Shell _shell;
    Command _command;
    PhoneListener* _listener = nullptr;
    std::deque<std::string> _waiting;  ///< posts that the phone has not answered
    std::size_t _sent = 0;             ///< how many of them its shell has been given
    std::map<std::string, int> _echoes;
};

}  // namespace hosts
