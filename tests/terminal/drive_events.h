// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>

#include "phone.h"

/// Events that more than one test expects.
namespace test {

inline nlohmann::json reloadOf(const nlohmann::json& row, int position, bool animated) {
    return {{"event", "reload"}, {"row", row}, {"position", position}, {"animated", animated}};
}

/// A write of the settings file.
inline nlohmann::json written(bool ok = true) {
    return {{"event", "write"}, {"path", settingsPath}, {"ok", ok}};
}

/// What tells the add-on of it.
inline nlohmann::json notified() {
    return {{"event", "notification"}, {"name", "com.fenwary.trivel3.preferencesChanged"}};
}

}  // namespace test
