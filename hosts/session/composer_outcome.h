// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace hosts {

/// What became of what the user has composed.
struct ComposerOutcome {
    enum class Weight {
        plain,   ///< worth a word only where the user does not see the program that has opened
        news,    ///< worth a word in any case
        problem  ///< something did not work, or not in full
    };

    Weight weight = Weight::problem;
    std::string text;
    /// Whether the composer has been finished, so that its page has dismissed it. Otherwise it stays as the user left
    /// it, for another try.
    bool isFinished = true;
    /// Presents another composer with the same content, where that is worth another try; else null. It outlives the
    /// composer, but not the session.
    std::function<void()> beginAgain = nullptr;
};

}  // namespace hosts
