// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hosts/session/composer_outcome.h"
#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/screen/event.h"

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

/// A key and what it does.
struct KeyHint {
    std::string key;
    std::string action;
};

/// Something that is shown over the page and takes all keys while it is.
class Sheet {
public:
    virtual ~Sheet() = default;

    virtual std::string title() const = 0;
    /// In exactly this many columns, and at most this many lines.
    virtual Picture compose(Size size) = 0;
    /// The most needed first.
    virtual std::vector<KeyHint> hints() const = 0;
    /// A click's place counts from the top left corner of the sheet. The sheet may be gone from the
    /// screen afterwards.
    virtual void handle(const Event& event) = 0;
};

}  // namespace hosts::terminal::screen
