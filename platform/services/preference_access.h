// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/foundation/object.h"
#include "platform/foundation/value.h"

namespace platform {

/// A pane's settings without its pages: for programs that read and set them by name. A bundle names
/// the class that provides it in its Info.plist.
class TRIVEL3_PLATFORM_EXPORT PreferenceAccess : public Object {
public:
    /// The Info.plist entry that names the class.
    static constexpr const char* infoKey = "PreferenceAccessClass";

    enum class Kind { boolean, integer, dictionary };

    struct Setting {
        std::string key;
        Kind kind;
        /// Nothing for a setting that reads as nothing until it is first set.
        std::optional<Value> defaultValue;
    };

    /// A file that the pane keeps, and the notification that it posts after each write of it.
    struct ObservedFile {
        std::string notification;
        std::string path;
    };

    /// Every setting that the pane knows, in its own order.
    virtual std::vector<Setting> settings() const = 0;

    /// The pane's read rule: the stored value, else the default, else nothing.
    virtual std::optional<Value> preferenceForKey(std::string_view key) const = 0;

    /// What the file itself holds under the key.
    virtual std::optional<Value> storedValueForKey(std::string_view key) const = 0;

    /// The pane's write rule. Tells nothing of failure, as the pane does.
    virtual void setPreferenceForKey(Value value, std::string_view key) = 0;

    /// The same for several keys, in one change of their file and with one notification.
    virtual void setPreferences(Dictionary values) = 0;

    /// The main settings file first.
    virtual std::vector<ObservedFile> observedFiles() const = 0;
};

}  // namespace platform
