// SPDX-License-Identifier: MIT
#include "store/exceptions_file.h"

#include "store/phone_property_list.h"

namespace trivel3::exceptions {

bool isTicked(const platform::Platform& platform, std::string_view identifier) {
    return platform::boolValue(readPhoneDictionaryEntry(platform.files, file, identifier));
}

void change(platform::Platform& platform, const std::function<platform::Dictionary(platform::Dictionary)>& change) {
    auto held = readPhoneDictionary(platform.files, file).value_or(platform::Dictionary());
    writePhoneDictionary(platform.files, file, change(std::move(held)));
    platform.notifications.postNotification(changeNotification);
}

}  // namespace trivel3::exceptions
