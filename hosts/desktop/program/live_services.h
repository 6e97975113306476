// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/desktop/program/noted_files.h"
#include "hosts/hand_over/hand_over.h"
#include "hosts/notifications/session_notify_center.h"
#include "hosts/phones/device_information.h"
#include "hosts/session/composers.h"
#include "hosts/session/opened_phone.h"
#include "hosts/session/settings_session.h"

namespace hosts::desktop {

/// What the pages of a window reach the world by.
struct LiveServices {
    /// Both outlive the services; the listener may be null.
    LiveServices(OpenedPhone& phone, platform::SkipListener* skipListener)
        : skips(skipListener),
          files(phone.files),
          notifications(phone.installation.sessionBusModule()),
          desktop(phone.installation.desktopModule()),
          opener(desktop, programs),
          deviceInformation(phone.files, phone.folder),
          handOver(phone.installation.mailModule(), desktop, programs, opener) {}

    SessionServices forSession() {
        return {files, notifications, opener, deviceInformation, composers, composers, skips};
    }

    platform::SkipListener* skips;
    NotedFiles files;
    SessionNotifyCenter notifications;
    Desktop desktop;
    XdgPrograms programs;
    UrlOpener opener;
    DeviceInformation deviceInformation;
    Composers composers;
    DesktopHandOver handOver;
};

}  // namespace hosts::desktop
