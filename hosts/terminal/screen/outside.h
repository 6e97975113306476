// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "hosts/hand_over/desktop.h"
#include "hosts/hand_over/mail_sender.h"
#include "hosts/hand_over/url_opener.h"
#include "hosts/hand_over/xdg_programs.h"
#include "hosts/notifications/session_notify_center.h"
#include "hosts/phones/device_information.h"
#include "hosts/session/composers.h"
#include "hosts/session/settings_session.h"
#include "hosts/terminal/commands/watched_writes.h"
#include "hosts/terminal/program_context.h"
#include "hosts/terminal/screen/sheet.h"
#include "platform/services/application.h"

namespace hosts::terminal::screen {

/// Opens addresses with the user's programs and says so, since a terminal shows nothing of it.
class NoticingApplication final : public platform::UIApplication {
public:
    NoticingApplication(UrlOpener& opener, Notices& notices) : _opener(opener), _notices(notices) {}

    bool canOpenURL(std::string_view url) override { return _opener.canOpenURL(url); }
    bool openURL(std::string_view url) override;

private:
    UrlOpener& _opener;
    Notices& _notices;
};

/// All that the pages of an interactive screen reach the world by: the phone's real files, real
/// notifications, and the user's programs.
class Outside {
public:
    /// Both outlive the object.
    Outside(ProgramContext& context, Notices& notices);

    SessionServices services();
    SessionNotifyCenter& notifications() { return _notifications; }
    UrlOpener& opener() { return _opener; }
    MailSender& mail() { return _mail; }
    const ProgramContext& context() const { return _context; }

    /// What went wrong with the last write since this was last asked; nothing when none was tried or
    /// it worked. The pages themselves are silent about it.
    std::optional<std::string> takeWriteProblem();

private:
    ProgramContext& _context;
    WatchedWrites _files;
    SessionNotifyCenter _notifications;
    Desktop _desktop;
    XdgPrograms _programs;
    UrlOpener _opener;
    NoticingApplication _application;
    DeviceInformation _deviceInformation;
    MailSender _mail;
    Composers _composers;
};

}  // namespace hosts::terminal::screen
