// SPDX-License-Identifier: MIT
#include "hosts/phones/folder_phone.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <utility>

#include "hosts/phones/file_watch.h"
#include "hosts/phones/phone_mark.h"

namespace hosts {
namespace {

using platform::Result;

PhoneIdentity identityOf(const std::string& folder, int root) {
    std::error_code ignored;
    const auto place = std::filesystem::canonical(folder, ignored);
    return {place.string(), place.filename().string(), isMount(root) ? PhoneKind::mount : PhoneKind::folder};
}

/// What the watch and the session bus tell, behind one descriptor.
class FolderEvents final : public PhoneEvents {
public:
    FolderEvents(FileWatch files, SessionNotifyCenter& notifications, std::string place)
        : _files(std::move(files)), _place(std::move(place)) {
        if (auto observed = notifications.observe()) {
            _notifications = *std::move(observed);
            _files.alsoWaitFor(_notifications->descriptor());
        } else {
            _whyNoNotifications = std::move(observed).error();
        }
    }

    int descriptor() const override { return _files.descriptor(); }

    std::optional<PhoneEvent> next() override {
        if (_notifications) {
            if (auto name = _notifications->next()) return PhoneEvent{PhoneEvent::Kind::notification, *std::move(name)};
            if (_notifications->ended()) endNotifications();
        }
        // First: in a folder that has gone, every file seems to have been removed.
        if (const auto why = _files.nextGoing()) return PhoneEvent{PhoneEvent::Kind::gone, _place + " " + *why};
        auto path = _files.nextChange();
        if (!path) return std::nullopt;
        return PhoneEvent{PhoneEvent::Kind::fileChanged, *std::move(path)};
    }

    const std::optional<platform::Problem>& whyNoNotifications() const override { return _whyNoNotifications; }

private:
    void endNotifications() {
        _files.waitForNoOther();
        _whyNoNotifications = _notifications->ended();
        _notifications.reset();
    }

    FileWatch _files;
    std::string _place;
    std::unique_ptr<NotificationStream> _notifications;
    std::optional<platform::Problem> _whyNoNotifications;
};

}  // namespace

platform::Result<std::unique_ptr<Phone>> FolderPhone::open(const std::string& folder, const std::string& busModule,
                                                           const std::optional<MountMemory>& mounts,
                                                           const std::string& notify) {
    auto files = PhoneFileSystem::open(folder);
    if (!files) return std::move(files).error();
    // A mount that has died can still be opened.
    if (const auto why = whyGone(files->root()))
        return platform::Problem{folder, "cannot open the phone", "it " + *why};
    PhoneIdentity identity = identityOf(folder, files->root());
    if (mounts) {
        const auto met = mounts->meet(files->root(), identity.place);
        if (!met) return met.error();
    }
    return std::unique_ptr<Phone>(new FolderPhone(*std::move(files), folder, busModule, notify, std::move(identity)));
}

FolderPhone::FolderPhone(PhoneFileSystem files, std::string folder, const std::string& busModule,
                         const std::string& notify, PhoneIdentity identity)
    : _folder(std::move(folder)),
      _files(std::move(files)),
      _notifications(busModule, [this] { return shell(); }, {notify, true}),
      _device(_files, _folder),
      _identity(std::move(identity)) {}

Result<WaitingShell*> FolderPhone::shell() {
    if (_shell && _shell->isAlive()) return _shell.get();
    auto process = PipedProcess::start("/bin/sh", {});
    if (!process) return process.error();
    _shell = std::make_unique<WaitingShell>(*std::move(process));
    return _shell.get();
}

// What a mount remembers takes no time to be told.
std::optional<double> FolderPhone::roundTrip() {
    if (_identity.kind != PhoneKind::mount) return std::nullopt;
    const auto start = std::chrono::steady_clock::now();
    struct statx status {};
    ::statx(_files.root(), "", AT_EMPTY_PATH | AT_STATX_FORCE_SYNC, STATX_BASIC_STATS, &status);
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The phone's own answers, whichever the user has named in their place.
std::string FolderPhone::mark() {
    DeviceInformation own(_files, _folder);
    return phoneMark(_files.root(), own);
}

std::unique_ptr<PhoneEvents> FolderPhone::observe(std::span<const std::string> paths, std::span<const std::string>) {
    return std::make_unique<FolderEvents>(FileWatch(_files, {paths.begin(), paths.end()}), _notifications.bus(),
                                          _identity.place);
}

}  // namespace hosts
