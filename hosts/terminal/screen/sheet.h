// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
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
    /// Takes up again what the notice is about, where that can be done; else null.
    std::function<void()> beginAgain = nullptr;
};

/// The one notice that is shown, until the user does something else.
class Notices {
public:
    void say(std::string text) { _notice = Notice{std::move(text), false}; }
    void warn(std::string text) { _notice = Notice{std::move(text), true}; }
    /// A terminal shows nothing of what has opened elsewhere, so even that is told.
    void tell(ComposerOutcome outcome) {
        _notice = Notice{std::move(outcome.text), outcome.weight == ComposerOutcome::Weight::problem,
                         std::move(outcome.beginAgain)};
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

    /// Whether the user has typed something here that would be lost with the sheet.
    virtual bool holdsTypedText() const { return false; }
    /// Asks the user whether that may be, and calls `agreed` if so.
    virtual void askToDrop(const std::function<void()>& agreed) { agreed(); }
};

/// A sheet over all others: the help, or a question. It takes itself off.
class Overlay {
public:
    void show(std::shared_ptr<Sheet> sheet) { _sheet = std::move(sheet); }
    void close() { _sheet.reset(); }
    /// Null when there is none.
    const std::shared_ptr<Sheet>& sheet() const { return _sheet; }

private:
    std::shared_ptr<Sheet> _sheet;
};

}  // namespace hosts::terminal::screen
