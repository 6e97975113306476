// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/result.h"

namespace hosts {

/// Where the parts that belong to a program are, absolute.
struct Installation {
    std::string systemImage;  ///< folder in which the phone's paths of bundles are looked up
    std::string modules;      ///< folder of the modules that the program loads when it needs them
    std::string data;         ///< folder of the data that comes with the program

    std::string sessionBusModule() const { return modules + "/libtrivel3dbus.so"; }
    std::string desktopModule() const { return modules + "/libtrivel3gio.so"; }
    std::string mailModule() const { return modules + "/libtrivel3mail.so"; }
    std::string terminalModule() const { return modules + "/libtrivel3curses.so"; }
    std::string samplePhone() const { return data + "/sample-phone"; }
};

/// The installation that the executable PREFIX/bin/PROGRAM belongs to. A `systemImage` that is not
/// empty stands in for the installed one; a relative one is taken from the working folder.
Installation installationAround(std::string_view executable, std::string_view systemImage = {});

/// The installation of the running program. The environment variable TRIVEL3_SYSTEM_IMAGE names
/// another system image, for those who work on a bundle; a program that runs with more rights than
/// its user's ignores it. A problem when the system does not tell where the
/// program lies.
platform::Result<Installation> findInstallation();

}  // namespace hosts
