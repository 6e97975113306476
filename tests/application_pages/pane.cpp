// SPDX-License-Identifier: MIT
#include "pane.h"

#include <gtest/gtest.h>

#include <ostream>
#include <utility>

namespace application_pages_test {

void PrintTo(const TickPage& page, std::ostream* stream) {
    *stream << page.className;
}

platform::Value Pane::content(std::string_view file) const {
    auto dictionary = phone.dictionary(file);
    return dictionary ? platform::Value(*std::move(dictionary)) : platform::Value();
}

platform::Value Pane::ticks(const TickPage& page) const {
    const platform::Value whole = content(page.file);
    if (page.file != settingsFile || !whole.dictionary()) return whole;
    const platform::Value* ticks = whole.dictionary()->find(spared);
    return ticks ? *ticks : platform::Value();
}

void Pane::setTicks(const TickPage& page, platform::Value ticks) {
    if (page.file == settingsFile) {
        phone.put(settingsFile, only(spared, std::move(ticks)));
    } else {
        phone.put(page.file, *ticks.dictionary());
    }
}

PaneWithApplications::PaneWithApplications() {
    EXPECT_TRUE(app_list_test::loadAppList(*this));
    app_list_test::installSystem(phone, clockIdentifier, "Clock");
    app_list_test::installSystem(phone, mapsIdentifier, "Maps");
    app_list_test::installUser(phone, tidesIdentifier, "Tides");
    app_list_test::installUser(phone, zitherIdentifier, "Zither");
}

platform::Dictionary only(std::string_view key, platform::Value value) {
    platform::Dictionary dictionary;
    dictionary.set(key, std::move(value));
    return dictionary;
}

}  // namespace application_pages_test
