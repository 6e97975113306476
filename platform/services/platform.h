// SPDX-License-Identifier: MIT
#pragma once

#include "platform/foundation/bundle.h"
#include "platform/foundation/class_registry.h"
#include "platform/services/application.h"
#include "platform/services/device_query.h"
#include "platform/services/dictionary_files.h"
#include "platform/services/file_system.h"
#include "platform/services/notification_center.h"
#include "platform/ui/device.h"

namespace platform {

class MailService;
class PostService;

/// Everything that a page lives in. The host makes one and keeps it for longer than any page; two of
/// them side by side know nothing of each other.
struct Platform {
    FileSystem& files;
    DarwinNotifyCenter& notifications;
    ClassRegistry& classes;
    SystemImage& system;
    UIApplication& application;
    DeviceQuery& deviceQuery;
    MailService& mail;
    PostService& posts;
    UIDevice device;
    UIScreen screen;
    /// Null when nobody wants to know what becomes of the phone's files.
    FileListener* listener = nullptr;
    DictionaryFiles dictionaries{files, listener};
};

}  // namespace platform
