// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hosts/hand_over/hand_over.h"
#include "platform/services/post_composer.h"

namespace hosts {

/// What became of what the user has composed.
struct ComposerOutcome {
    enum class Weight {
        plain,   ///< worth a word only where the user does not see the program that has opened
        news,    ///< worth a word in any case
        problem  ///< something did not work, or not in full
    };

    /// Whether the composer has been finished, so that its page has dismissed it. Otherwise it stays as
    /// the user left it, for another try.
    bool isFinished = false;
    Weight weight = Weight::problem;
    std::string text;
};

/// Each hands over what is composed and, unless it is in the user's hands in no way at all, finishes the
/// composer.
ComposerOutcome sendMail(platform::MFMailComposeViewController& mail, HandOver& handOver);
ComposerOutcome saveMail(platform::MFMailComposeViewController& mail, HandOver& handOver);
/// The text is the user's, who may have changed the composer's.
ComposerOutcome post(platform::SLComposeViewController& composer, const std::string& text, HandOver& handOver);

}  // namespace hosts
