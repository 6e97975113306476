// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <string>

#include "hosts/session/exit_status.h"

namespace hosts::desktop {

/// Whether nobody reads standard error: it is no terminal, and there is a display to say on what there is to say. So it
/// is where a desktop's launcher has started the program.
bool isReadOnDisplayAlone();

/// Shows the text, which may hold any bytes, with one button to close it by; comes back when the user has closed it.
/// For a program that has an application object.
void showMessage(const std::string& message, const QString& action);

/// Says the line on standard error and, where it is read on the display alone, in a window; comes back when the user
/// has closed that. Gives the status. For a program that has an application object.
int failBeforeUser(ExitStatus status, const std::string& message);

/// The same for one that has none yet.
int failBeforeUser(int argumentCount, char** arguments, ExitStatus status, const std::string& message);

}  // namespace hosts::desktop
