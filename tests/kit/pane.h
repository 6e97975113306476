// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "tests/kit/test_platform.h"

namespace kit {

/// A platform that knows the pane's classes, which are linked into the test program.
class Pane : public TestPlatform {
public:
    explicit Pane(Shape shape = tallPhone, std::string systemImage = stagedSystemImage());

    /// Opens a page and forgets what that did.
    platform::PSListController& openQuietly(std::string_view className);
};

inline constexpr std::string_view settingsFile = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
inline constexpr std::string_view settingsNotification = "com.fenwary.trivel3.preferencesChanged";

// The two events of one settings write.
Event settingsWritten();
Event settingsNotWritten();
Event settingsChanged();

}  // namespace kit
