// SPDX-License-Identifier: MIT
#include "pages/features/exceptions_page.h"

#include "pages/application_rows.h"
#include "store/exceptions_file.h"

namespace trivel3 {

platform::PSListController::Specifiers KavixPreferencesExceptionsController::buildSpecifiers() {
    return ApplicationRowBuilder(*this).build();
}

bool KavixPreferencesExceptionsController::isTicked(const std::string& identifier) {
    const auto ticks = platform().dictionaries.read(exceptions::file);
    const platform::Value* tick = ticks ? ticks->find(identifier) : nullptr;
    return tick && platform::boolValue(*tick);
}

void KavixPreferencesExceptionsController::setTicked(bool ticked, const std::string& identifier) {
    platform().dictionaries.edit(exceptions::file, [ticked, identifier](platform::Dictionary ticks) {
        ticks.set(identifier, ticked);
        return ticks;
    });
    platform().notifications.postNotification(exceptions::changeNotification);
}

}  // namespace trivel3
