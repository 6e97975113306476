// SPDX-License-Identifier: MIT
#pragma once

#include "store/preference_store.h"

namespace trivel3::options {

/// What the rows of the advanced options page depend on.
struct State {
    bool isPhone;
    bool isTall;  ///< a phone whose screen has room for the reachable and minimal displays
    bool multiCenter;
    bool quickSwitcher;
    bool hotCorners;
    bool minimal;    ///< taken as on where it cannot be chosen
    bool reachable;  ///< taken as off where it cannot be chosen
    bool opensToLastApp;

    bool anyMasterSwitch() const { return multiCenter || quickSwitcher || hotCorners; }
    bool minimalWithinReach() const { return minimal && reachable; }
};

State currentState(const platform::Platform& platform, const PreferenceStore& store);

}  // namespace trivel3::options
