// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

#include "hosts/terminal/drive/event_log.h"
#include "platform/services/application.h"
#include "platform/services/file_listener.h"
#include "platform/services/notification_center.h"

/// What notes in the event log what a page asks of its services.
namespace hosts::terminal {

/// The writes of the phone's settings. What is passed over is another listener's to tell.
class FileRecorder final : public platform::FileListener {
public:
    /// The other listener may be null.
    FileRecorder(platform::FileListener* other, EventLog& events) : _other(other), _events(events) {}

    void passedOver(const platform::Problem& problem) override {
        if (_other) _other->passedOver(problem);
    }
    void changed(std::string_view path, const platform::Dictionary& before,
                 const platform::Dictionary& after) override {
        _events.add({{"event", "write"}, {"path", path}, {"ok", true}});
        if (_other) _other->changed(path, before, after);
    }
    void notRead(const platform::Problem& problem) override {
        if (_other) _other->notRead(problem);
    }
    void notChanged(const platform::Problem& problem, bool wasTried) override {
        if (wasTried) _events.add({{"event", "write"}, {"path", problem.path}, {"ok", false}});
    }

private:
    platform::FileListener* _other;
    EventLog& _events;
};

/// Notifications go out to the add-on.
class NotificationRecorder final : public platform::DarwinNotifyCenter {
public:
    NotificationRecorder(platform::DarwinNotifyCenter& center, EventLog& events) : _center(center), _events(events) {}

    void postNotification(std::string_view name) override {
        _events.add({{"event", "notification"}, {"name", name}});
        _center.postNotification(name);
    }

private:
    platform::DarwinNotifyCenter& _center;
    EventLog& _events;
};

/// URLs go nowhere. A scheme that counts as having a program opens; any other does not.
class UrlRecorder final : public platform::UIApplication {
public:
    UrlRecorder(std::set<std::string> openableSchemes, EventLog& events)
        : _openableSchemes(std::move(openableSchemes)), _events(events) {}

    bool canOpenURL(std::string_view url) override {
        const bool answer = hasProgram(url);
        _events.add({{"event", "can-open-url"}, {"url", url}, {"answer", answer}});
        return answer;
    }
    bool openURL(std::string_view url) override {
        _events.add({{"event", "open-url"}, {"url", url}});
        return hasProgram(url);
    }

private:
    bool hasProgram(std::string_view url) const {
        return _openableSchemes.contains(std::string(url.substr(0, url.find(':'))));
    }

    std::set<std::string> _openableSchemes;
    EventLog& _events;
};

}  // namespace hosts::terminal
