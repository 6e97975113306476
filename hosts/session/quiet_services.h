// SPDX-License-Identifier: MIT
#pragma once

#include "platform/services/application.h"
#include "platform/services/device_query.h"
#include "platform/services/notification_center.h"

/// Services for sessions in which nothing must reach the outside.
namespace hosts {

class QuietNotifyCenter final : public platform::DarwinNotifyCenter {
public:
    void postNotification(std::string_view) override {}
};

class QuietApplication final : public platform::UIApplication {
public:
    bool canOpenURL(std::string_view) override { return false; }
    bool openURL(std::string_view) override { return false; }
};

class QuietDeviceQuery final : public platform::DeviceQuery {
public:
    std::optional<platform::Value> copyAnswer(std::string_view) override { return std::nullopt; }
};

}  // namespace hosts
