// SPDX-License-Identifier: MIT
#pragma once

namespace hosts {

/// What every program of ours does first and last, around `run`, whose exit status it gives.
///
/// Standard streams that are closed are filled, so that no file takes their place. A file that would grow beyond the
/// user's limit cannot be written, and ends nothing (SIGXFSZ). Output that could not be written is a failure. An
/// exception becomes one line on standard error and the status `failed`.
int runAsProgram(int (*run)(int argumentCount, char** arguments), int argumentCount, char** arguments);

/// Says in one line on standard error what the exception is that is being handled, under the name of the program. Takes
/// no memory where the want of it is the exception. Gives `failed`.
int failForException();

}  // namespace hosts
