// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <optional>
#include <string>

#include "tests/desktop/virtual_display.h"
#include "tests/kit/child_process.h"

namespace desktop_tests {

/// A Wayland desktop that leaves frames to the programs: on a display of a test's own, or nowhere and
/// without a seat, as when nobody has a mouse or keys.
class VirtualCompositor {
public:
    /// What the desktop behind the windows is painted in.
    static constexpr QRgb background = qRgb(0x20, 0x60, 0xa0);

    ~VirtualCompositor();

    /// Whether the machine has one at all.
    static bool isInstalled();

    static constexpr QSize usualSize{760, 860};

    /// Starts it with its socket in the run-time folder. False when it does not start.
    bool startOn(const VirtualDisplay& display, const std::string& runtimeFolder, QSize size = usualSize);
    bool startWithoutSeat(const std::string& runtimeFolder);

    /// What WAYLAND_DISPLAY has to be.
    static constexpr const char* name = "trivel3-test";

private:
    bool start(const std::string& backend, kit::Environment environment, const std::string& runtimeFolder,
               QSize size = usualSize);

    std::optional<kit::ChildProcess> _server;
};

}  // namespace desktop_tests
