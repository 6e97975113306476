// SPDX-License-Identifier: MIT
#include "pages/features/exceptions_page.h"

#include "pages/application_rows.h"
#include "store/exceptions_file.h"
#include "store/phone_property_list.h"

namespace trivel3 {

platform::PSListController::Specifiers KavixPreferencesExceptionsController::buildSpecifiers() {
    return ApplicationRowBuilder(*this).build();
}

bool KavixPreferencesExceptionsController::isTicked(const std::string& identifier) {
    return platform::boolValue(readPhoneDictionaryEntry(platform().files, exceptions::file, identifier));
}

void KavixPreferencesExceptionsController::setTicked(bool ticked, const std::string& identifier) {
    auto ticks = readPhoneDictionary(platform().files, exceptions::file).value_or(platform::Dictionary());
    ticks.set(identifier, ticked);
    writePhoneDictionary(platform().files, exceptions::file, ticks);
    platform().notifications.postNotification(exceptions::changeNotification);
}

}  // namespace trivel3
