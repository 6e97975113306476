// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "platform/foundation/value.h"
#include "platform/services/platform.h"

namespace trivel3 {

/// The one way to the settings: a read rule and a write rule. It keeps nothing between calls; the
/// file is the state, since the add-on writes it too.
class PreferenceStore {
public:
    static constexpr std::string_view settingsFile = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
    static constexpr std::string_view changeNotification = "com.fenwary.trivel3.preferencesChanged";

    explicit PreferenceStore(platform::Platform& platform) : _platform(platform) {}

    /// The file's value as it is stored, of whatever kind; else the catalogue's default; else nothing.
    std::optional<platform::Value> preferenceForKey(std::string_view key) const;

    /// Reads the file anew, sets the key in what it holds, replaces the file and posts the change
    /// notification, whether or not the write succeeded. A file that does not read as a dictionary
    /// is replaced by one that holds just this key.
    void setPreferenceForKey(platform::Value value, std::string_view key);

    /// The same for several keys, in one change of the file.
    void setPreferences(platform::Dictionary values);

    /// What a change makes of what the file holds under a key, each nothing where there is none. It may
    /// be asked again of a newer file: it keeps what it needs by value and does nothing but answer.
    using Change = std::function<std::optional<platform::Value>(std::optional<platform::Value> held)>;

    /// As `setPreferenceForKey`, but the value is made from the one that the file holds at the moment
    /// of the write, without a default. Giving nothing takes the key out.
    void changePreferenceForKey(std::string_view key, const Change& change);

    /// The file's value, without a default.
    std::optional<platform::Value> storedValueForKey(std::string_view key) const;

private:
    void edit(const platform::DictionaryFiles::Edit& edit);

    platform::Platform& _platform;
};

}  // namespace trivel3
