// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/session/opened_phone.h"

namespace hosts::terminal {

/// The interactive screen, on the terminal that standard input and output are; it ends when the user
/// quits or a signal asks for it. Where there is no such terminal it prints the root page, and says on
/// standard error how to go on. Gives the program's exit status.
int runScreen(OpenedPhone& context);

}  // namespace hosts::terminal
