// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hosts/phones/far/ssh_connection.h"
#include "hosts/session/device_shape.h"

namespace CLI {
class App;
}

namespace hosts {

/// The options of the command line that every program of ours takes.
struct PhoneOptions {
    std::string phone;  ///< empty for the default phone
    SshOptions ssh;     ///< how one that is named by its address is reached
    const DeviceShape* device = &usualDeviceShape();
    bool isDeviceNamed = false;     ///< whether the user has named it
    std::string deviceInformation;  ///< a list of answers about the device; empty for the phone's own
    bool create = false;            ///< whether a folder that was a mount, and is none now, is used as it is
    bool verbose = false;           ///< whether to say what is passed over on the phone

    /// From here on, `app` fills the options in when it parses, and refuses what they cannot be.
    void addTo(CLI::App& app);
};

}  // namespace hosts
