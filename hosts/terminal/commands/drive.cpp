// SPDX-License-Identifier: MIT
#include <iostream>

#include "hosts/notifications/session_notify_center.h"
#include "hosts/phones/device_information.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/drive/drive_session.h"
#include "hosts/terminal/exit_status.h"
#include "hosts/terminal/render/value_json.h"

namespace hosts::terminal {

int runDrive(ProgramContext& context, const DriveOptions& options) {
    SessionNotifyCenter notifications(context.installation.sessionBusModule());
    DeviceInformation deviceInformation(context.files, context.phoneFolder);
    DriveSession session({context.files, notifications, deviceInformation, context.installation.systemImage,
                          context.device, context.skips.get()},
                         options.openableSchemes);
    std::string error;
    if (!deviceInformation.useFile(context.deviceInformation, error)) return fail(failed, error);
    if (!session.start(error)) return fail(failed, error);
    std::string line;
    // Nothing is carried out whose answer nobody can read.
    while (std::cout && std::getline(std::cin, line))
        std::cout << jsonLine(session.answer(line)) << std::endl;
    return done;
}

}  // namespace hosts::terminal
