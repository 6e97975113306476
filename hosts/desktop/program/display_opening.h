// SPDX-License-Identifier: MIT
#pragma once

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

}  // namespace hosts::desktop
