// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/foundation/value.h"
#include "platform/services/application.h"
#include "platform/services/device_query.h"
#include "platform/services/notification_center.h"
#include "tests/kit/event.h"

namespace kit {

/// A notification centre that only logs.
class TestNotifyCenter final : public platform::DarwinNotifyCenter {
public:
    explicit TestNotifyCenter(EventLog& log) : _log(log) {}
    void postNotification(std::string_view name) override { _log.add(event::notification(std::string(name))); }

private:
    EventLog& _log;
};

/// Logs the URLs and opens none.
class TestApplication final : public platform::UIApplication {
public:
    explicit TestApplication(EventLog& log) : _log(log) {}

    /// The schemes that have a program ("twitter"), case-sensitive.
    std::set<std::string, std::less<>> schemes;

    bool canOpenURL(std::string_view url) override;
    bool openURL(std::string_view url) override;

private:
    bool handles(std::string_view url) const;

    EventLog& _log;
};

class TestDeviceQuery final : public platform::DeviceQuery {
public:
    std::map<std::string, platform::Value, std::less<>> answers;

    std::optional<platform::Value> copyAnswer(std::string_view key) override;
};

}  // namespace kit
