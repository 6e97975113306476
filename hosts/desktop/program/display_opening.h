// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "hosts/desktop/program/settings_window.h"

namespace hosts::desktop {

/// The time in which the application object is made, and Qt looks for a display. Where it finds none,
/// Qt would abort with a page of advice: the program then ends instead, and says in one line what is
/// missing. What Qt has to say when all is well is said when that time is over.
///
/// One at a time, on the main thread.
class DisplayOpening {
public:
    DisplayOpening();
    DisplayOpening(const DisplayOpening&) = delete;
    DisplayOpening& operator=(const DisplayOpening&) = delete;
    ~DisplayOpening();

private:
    bool _isWithoutInputMethods;
};

/// An application object, of QGuiApplication's kind, for which a display has been opened and that is set up. Both
/// arguments are main's, and outlive it.
template <class Kind>
class DisplayedApplication {
public:
    DisplayedApplication(int& argumentCount, char** arguments)
        : _opening(std::in_place), _application(argumentCount, arguments) {
        _opening.reset();
        setUpApplication();
    }
    Kind& get() { return _application; }

private:
    std::optional<DisplayOpening> _opening;
    Kind _application;
};

}  // namespace hosts::desktop
