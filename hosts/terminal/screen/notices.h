// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "hosts/session/composer_outcome.h"

namespace hosts::terminal::screen {

/// Something to tell the user in passing.
struct Notice {
    std::string text;
    bool isWarning = false;
};

/// The one notice that is shown, until the user does something else.
class Notices {
public:
    void say(std::string text) { _notice = Notice{std::move(text), false}; }
    void warn(std::string text) { _notice = Notice{std::move(text), true}; }
    /// A terminal shows nothing of what has opened elsewhere, so even that is told.
    void tell(ComposerOutcome outcome) {
        _notice = Notice{std::move(outcome.text), outcome.weight == ComposerOutcome::Weight::problem};
    }
    void clear() { _notice.reset(); }
    const std::optional<Notice>& current() const { return _notice; }

private:
    std::optional<Notice> _notice;
};

}  // namespace hosts::terminal::screen
