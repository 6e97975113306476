// SPDX-License-Identifier: MIT
#pragma once

/// For what a program, a bundle or a module uses of the platform's library; all else is hidden in it. A class
/// that is cast to on both sides of that border needs it even where all of it is in its header.
#define TRIVEL3_PLATFORM_EXPORT __attribute__((visibility("default")))
