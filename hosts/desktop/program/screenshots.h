// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hosts/desktop/program/options.h"
#include "hosts/session/opened_phone.h"

namespace hosts::desktop {

/// To be called before the application object is made: from here on Qt draws into memory, at the
/// device's own scale, and needs no display.
void prepareForScreenshots(const DeviceShape& device);

/// Draws every page that a link leads to, every composer that a page presents, and what the window itself lays over
/// them, into PNG files of the device's size in the folder `options.screenshots`, which is made when it is missing.
/// Pages that are longer than the screen go on in further files. Nothing of the phone is changed.
platform::Result<platform::Done> takeScreenshots(OpenedPhone& phone, const Options& options);

}  // namespace hosts::desktop
