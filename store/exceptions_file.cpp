// SPDX-License-Identifier: MIT
#include "store/exceptions_file.h"

namespace trivel3::exceptions {

bool isTicked(platform::Platform& platform, std::string_view identifier) {
    const auto ticks = platform.dictionaries.read(file);
    return ticks && platform::boolValue(ticks->valueForKey(identifier));
}

void change(platform::Platform& platform, const std::function<platform::Dictionary(platform::Dictionary)>& change) {
    platform.dictionaries.edit(file, change);
    platform.notifications.postNotification(changeNotification);
}

}  // namespace trivel3::exceptions
