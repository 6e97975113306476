// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/hand_over/desktop.h"
#include "hosts/hand_over/hand_over.h"
#include "hosts/hand_over/url_opener.h"
#include "hosts/hand_over/xdg_programs.h"
#include "hosts/session/opened_phone.h"
#include "platform/services/application.h"
#include "platform/services/device_query.h"
#include "platform/services/file_system.h"
#include "platform/services/notification_center.h"
#include "platform/ui/navigation_controller.h"

namespace hosts {

/// What a session's pages reach the world by. All of it outlives the session.
struct SessionServices {
    platform::FileSystem& files;
    platform::DarwinNotifyCenter& notifications;
    platform::UIApplication& application;
    platform::DeviceQuery& device;
    /// Null when nobody wants to know what becomes of the files.
    platform::FileListener* listener = nullptr;
    /// What the phone's own files are changed by, turn by turn; null for a session whose changes are not kept.
    PhoneHistory* history = nullptr;
    /// Whose centre's answers are waited for at the end of each turn; null for nobody's.
    Phone* phone = nullptr;
};

/// The phone's own files and notifications, and the user's programs. Nothing is loaded or started before it is needed.
struct LiveServices {
    /// The phone outlives the services.
    explicit LiveServices(OpenedPhone& opened)
        : phone(*opened.phone),
          outcomes(*opened.outcomes),
          history(*opened.history),
          desktop(opened.installation.desktopModule()),
          opener(desktop, programs),
          handOver(opened.installation.mailModule(), desktop, programs, opener) {}

    SessionServices forSession() {
        return {phone.files(), phone.notifications(), opener, phone.device(), &history.recorder, &history, &phone};
    }

    Phone& phone;
    Outcomes& outcomes;
    PhoneHistory& history;
    Desktop desktop;
    XdgPrograms programs;
    UrlOpener opener;
    DesktopHandOver handOver;
};

/// A file system over another: what is written stays in memory and is found there, and the file
/// system below is only read.
class ScratchFileSystem : public platform::FileSystem {
public:
    /// `below` outlives the object.
    explicit ScratchFileSystem(const platform::FileSystem& below) : _below(below) {}

    using platform::FileSystem::readFile;
    platform::Result<platform::Stamp> look(std::string_view path) const override;
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override;
    platform::Result<platform::Stamp> readAgain(std::string_view path, std::string& contents) const override;
    platform::Result<std::vector<std::string>> listFolder(std::string_view path) const override {
        return _below.listFolder(path);
    }
    platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change& change) override;
    bool isFar() const override { return _below.isFar(); }
    void expect(std::span<const std::string> files, std::span<const std::string> folders) const override {
        _below.expect(files, folders);
    }

    /// The files are those of the file system below again.
    void forgetChanges() { _written.clear(); }

private:
    struct Written {
        std::string contents;
        platform::Stamp stamp;
    };

    const platform::FileSystem& _below;
    std::map<std::string, Written, std::less<>> _written;
};

struct QuietNotifyCenter final : platform::DarwinNotifyCenter {
    void postNotification(std::string_view) override {}
};

struct QuietApplication final : platform::UIApplication {
    bool canOpenURL(std::string_view) override { return false; }
    bool openURL(std::string_view) override { return false; }
};

/// On which nothing is seen to change.
struct QuietScreen final : platform::NavigationHost {
    void didPush(platform::UIViewController&, bool) override {}
    void didPop(platform::UIViewController&, platform::UIViewController&, bool) override {}
    void didPresent(const std::shared_ptr<platform::UIViewController>&, bool) override {}
    void didDismiss(bool) override {}
};

/// For sessions that only look: what a page repairs stays in memory, and nothing reaches the outside.
class QuietServices {
public:
    /// The phone outlives the services.
    explicit QuietServices(OpenedPhone& opened)
        : _phone(*opened.phone), _outcomes(*opened.outcomes), _files(opened.phone->files()) {}

    SessionServices forSession() { return {_files, _notifications, _application, _phone.device(), &_outcomes}; }

private:
    Phone& _phone;
    Outcomes& _outcomes;
    ScratchFileSystem _files;
    QuietNotifyCenter _notifications;
    QuietApplication _application;
};

}  // namespace hosts
