// SPDX-License-Identifier: MIT
#include "benchmarks/application_phone.h"

#include <map>
#include <stdexcept>
#include <utility>

#include "benchmarks/page_use.h"
#include "benchmarks/sample_applications.h"
#include "benchmarks/sample_settings.h"
#include "platform/foundation/property_list.h"
#include "store/exceptions_file.h"
#include "store/preference_store.h"

namespace benchmarks {

const TickPage closeAllAppsPage = {"Close All Apps",
                                   "KavixPreferencesCloseAllAppsController",
                                   trivel3::PreferenceStore::settingsFile,
                                   "CloseAllAppsExceptions",
                                   3,
                                   settingsWithTicks};
const TickPage exceptionsPage = {
    "Disable in Applications", "KavixPreferencesExceptionsController", trivel3::exceptions::file, "", 0, sampleTicks};

std::unique_ptr<BenchPhone> startOn(const std::string& phone, Durability durability) {
    auto program = std::make_unique<BenchPhone>(BenchPhone::Existing{phone}, durability);
    const auto bundle = program->platform().system.bundleWithPath("/System/Library/PreferenceBundles/AppList.bundle");
    if (!bundle || !bundle->load()) throw std::runtime_error("the app-list service cannot be loaded");
    return program;
}

ApplicationPhone::ApplicationPhone(std::size_t applications, Durability durability)
    : _folder(durability), _durability(durability) {
    installSampleApplications(folder(), applications);
    BenchPhone program(BenchPhone::Existing{folder()}, durability);
    for (const TickPage* kind : {&closeAllAppsPage, &exceptionsPage}) {
        program.platform().dictionaries.edit(
            kind->file, [content = kind->content(applications)](const platform::Dictionary&) { return content; });
    }
}

BenchPhone& ApplicationPhone::running() {
    if (!_running) {
        _running = start();
        openPage(*_running, closeAllAppsPage.className);
    }
    return *_running;
}

ApplicationPhone& ApplicationPhone::shared(std::size_t applications, Durability durability) {
    static std::map<std::pair<std::size_t, Durability>, std::unique_ptr<ApplicationPhone>> phones;
    auto& phone = phones[{applications, durability}];
    if (!phone) phone = std::make_unique<ApplicationPhone>(applications, durability);
    return *phone;
}

}  // namespace benchmarks
