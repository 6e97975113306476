// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "hosts/session/device_shape.h"
#include "platform/list/page_controller.h"
#include "platform/services/platform.h"
#include "platform/services/preference_access.h"

namespace hosts {

/// What a session's pages reach the world by. The services outlive the session.
struct SessionServices {
    platform::FileSystem& files;
    platform::DarwinNotifyCenter& notifications;
    platform::UIApplication& application;
    platform::DeviceQuery& deviceQuery;
    platform::MailService& mail;
    platform::PostService& posts;
    /// Null when nobody wants to know.
    platform::SkipListener* skips = nullptr;
};

/// A Settings application's process as the pane sees it: its classes, its system image, its services
/// and its device. It loads the pane from its bundle and knows nothing of it but what the bundle's
/// Info.plist says.
class SettingsSession {
public:
    SettingsSession(const SessionServices& services, const std::string& systemImage, const DeviceShape& shape);

    /// Loads the pane's bundle. False, with one line in `error`, when it is missing or broken.
    bool loadPane(std::string& error);

    /// A new root page, named as the bundle's entry in Settings is. Null, with one line in `error`,
    /// when the bundle's principal class is no page.
    std::shared_ptr<platform::PSViewController> makeRootPage(std::string& error);

    /// The pane's settings by name. Null, with one line in `error`, when the bundle offers none.
    std::shared_ptr<platform::PreferenceAccess> preferenceAccess(std::string& error);

    platform::Platform& platform() { return _platform; }

private:
    platform::ClassRegistry _classes;
    platform::SystemImage _system;
    platform::Platform _platform;
    std::optional<platform::NSBundle> _pane;
};

}  // namespace hosts
