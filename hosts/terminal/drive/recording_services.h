// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

#include "hosts/terminal/drive/event_log.h"
#include "platform/services/application.h"
#include "platform/services/file_system.h"
#include "platform/services/notification_center.h"

/// Services that note in the event log what a page asks of them.
namespace hosts::terminal {

/// Writes go through to the phone's files.
class RecordingFileSystem final : public platform::FileSystem {
public:
    RecordingFileSystem(platform::FileSystem& files, EventLog& events) : _files(files), _events(events) {}

    using platform::FileSystem::readFile;
    bool readFile(std::string_view path, std::string& contents, std::size_t limit) const override {
        return _files.readFile(path, contents, limit);
    }
    std::vector<std::string> listFolder(std::string_view path) const override { return _files.listFolder(path); }
    bool writeFileAtomically(std::string_view path, std::string_view contents) override;

private:
    platform::FileSystem& _files;
    EventLog& _events;
};

/// Notifications go out to the add-on.
class RecordingNotifyCenter final : public platform::DarwinNotifyCenter {
public:
    RecordingNotifyCenter(platform::DarwinNotifyCenter& center, EventLog& events) : _center(center), _events(events) {}
    void postNotification(std::string_view name) override;

private:
    platform::DarwinNotifyCenter& _center;
    EventLog& _events;
};

/// URLs go nowhere. A scheme that counts as having a program opens; any other does not.
class RecordingApplication final : public platform::UIApplication {
public:
    RecordingApplication(std::set<std::string> openableSchemes, EventLog& events)
        : _openableSchemes(std::move(openableSchemes)), _events(events) {}
    bool canOpenURL(std::string_view url) override;
    bool openURL(std::string_view url) override;

private:
    bool hasProgram(std::string_view url) const;

    std::set<std::string> _openableSchemes;
    EventLog& _events;
};

}  // namespace hosts::terminal
