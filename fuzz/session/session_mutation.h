// SPDX-License-Identifier: MIT
#pragma once

#include "fuzz/session/session_input.h"

namespace fuzz {

/// Changes the entries of one of the files, so that it stays a dictionary. Changes of mere bytes would
/// hardly ever leave one.
void changeEntries(SessionInput& input, unsigned seed);

}  // namespace fuzz
