// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/desktop/program/linux_hand_over.h"
#include "hosts/desktop/program/noted_files.h"
#include "hosts/linux/desktop.h"
#include "hosts/linux/device_information.h"
#include "hosts/linux/opened_phone.h"
#include "hosts/linux/session_notify_center.h"
#include "hosts/session/composers.h"
#include "hosts/session/settings_session.h"

namespace hosts::desktop {

/// What the pages of a window reach the world by.
struct LiveServices {
    /// `phone` outlives the services.
    explicit LiveServices(OpenedPhone& phone)
        : files(phone.files),
          notifications(phone.installation.sessionBusModule()),
          desktop(phone.installation.desktopModule()),
          opener(desktop, programs),
          deviceInformation(phone.files, phone.folder),
          mailSender(phone.installation.mailModule(), desktop, programs),
          handOver(mailSender, opener) {}

    SessionServices forSession() { return {files, notifications, opener, deviceInformation, composers, composers}; }

    NotedFiles files;
    SessionNotifyCenter notifications;
    Desktop desktop;
    XdgPrograms programs;
    UrlOpener opener;
    DeviceInformation deviceInformation;
    Composers composers;
    MailSender mailSender;
    LinuxHandOver handOver;
};

}  // namespace hosts::desktop
