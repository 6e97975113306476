// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/hand_over/hand_over.h"
#include "hosts/session/composer_outcome.h"

namespace hosts {

/// An e-mail that a page has presented, on its way into the user's hands. Whatever becomes of it finishes its composer,
/// so that the page has dismissed it.
class ComposedMail {
public:
    using Composer = platform::MFMailComposeViewController;
    enum class Way { send, saveDraft };

    /// `handOver` outlives the object.
    ComposedMail(std::shared_ptr<Composer> composer, HandOver& handOver)
        : _composer(std::move(composer)), _handOver(handOver) {}

    const Composer& composer() const { return *_composer; }

    /// The folder to suggest when the user is to be asked where the draft is to go; nothing when it has a place.
    std::optional<std::string> folderToAskFor();
    /// The path of the folder that the user has typed, in which "~" stands for their home folder. A problem unless it
    /// begins at one or the other.
    static platform::Result<std::string> folderNamed(std::string_view typed);

    /// Hands the e-mail over, with its draft in the folder.
    ComposerOutcome handOver(Way way, const std::string& folder);
    /// The same for a draft that has a place.
    ComposerOutcome handOver(Way way);
    void cancel() { _composer->finish(platform::MFMailComposeResult::cancelled); }

private:
    ComposerOutcome send(const std::string& folder);
    ComposerOutcome saveDraft(const std::string& folder);
    ComposerOutcome finish(platform::MFMailComposeResult result, ComposerOutcome outcome);
    ComposerOutcome fail(std::string text);
    std::function<void()> anotherTry() const;

    std::shared_ptr<Composer> _composer;
    HandOver& _handOver;
};

}  // namespace hosts
