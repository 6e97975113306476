// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "hosts/hand_over/hand_over.h"
#include "hosts/session/composer_outcome.h"
#include "platform/services/post_composer.h"

namespace hosts {

/// A post that a page has presented, as the user writes it. Posted or cancelled, it finishes its composer, which then
/// dismisses itself; a post that found no way out stays with its text.
class ComposedPost {
public:
    using Composer = platform::SLComposeViewController;
    /// As long as a post may be, in units of UTF-16.
    static constexpr int longest = 140;

    /// `handOver` outlives the object.
    ComposedPost(std::shared_ptr<Composer> composer, HandOver& handOver)
        : _composer(std::move(composer)), _handOver(handOver), _text(_composer->text()) {}

    const std::string& serviceType() const { return _composer->serviceType(); }

    /// In valid UTF-8.
    const std::string& text() const { return _text; }
    void setText(std::string text) { _text = std::move(text); }
    /// Whether the text is another than the page's.
    bool isChanged() const { return _text != _composer->text(); }

    /// What is left of a post's length; below 0 what is too much.
    int room() const;
    /// The same as a sentence: "1 character left", "3 characters too many".
    std::string roomText() const;
    /// Why the text cannot be posted, as a sentence; nothing when it can.
    std::optional<std::string> obstacle() const;

    /// Takes the user to where the text can be posted.
    ComposerOutcome post();
    void cancel() { _composer->finish(platform::SLComposeViewControllerResult::cancelled); }

private:
    std::shared_ptr<Composer> _composer;
    HandOver& _handOver;
    std::string _text;
};

}  // namespace hosts
