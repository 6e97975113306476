// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/screen/event.h"
#include "platform/foundation/result.h"

namespace hosts::terminal::screen {

/// The terminal on standard input and output, as a screen. It is put back as it was when the object
/// goes. One at a time; for one thread.
class Terminal {
public:
    virtual ~Terminal() = default;

    virtual Size size() const = 0;

    /// Brings the terminal to show the picture, with as few characters as it takes.
    virtual void paint(const Picture& picture) = 0;

    /// What the user has done; nothing when that is all for now. Does not wait.
    virtual std::optional<Event> nextEvent() = 0;

    /// Takes up the terminal's new size.
    virtual void adoptSize() = 0;
    /// Puts the terminal back as it was, until `resume`.
    virtual void suspend() = 0;
    /// Takes the terminal again, and forgets what it shows.
    virtual void resume() = 0;
};

/// What knows the terminals of this world. Its library and their descriptions are of no use to a command that
/// opens no screen, so this interface is implemented in a module that is loaded when it is wanted.
class TerminalLibrary {
public:
    virtual ~TerminalLibrary() = default;

    /// Whether the terminal on standard output is of a kind that can show a screen. Asked first, since the
    /// library would write without being able to place anything.
    virtual platform::Result<platform::Done> canShowScreen() = 0;

    virtual platform::Result<std::unique_ptr<Terminal>> open(bool wantsColour) = 0;
};

/// The name of the module's one entry point, a `ModuleObject<TerminalLibrary>::Make`.
constexpr const char* makeTerminalLibrarySymbol = "trivel3MakeTerminalLibrary";

}  // namespace hosts::terminal::screen
