// SPDX-License-Identifier: MIT
#include <iostream>
#include <string>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/drive/drive_session.h"
#include "hosts/terminal/render/value_json.h"

namespace hosts::terminal {

int runDrive(OpenedPhone& context, const DriveOptions& options) {
    LiveServices services(context);
    DriveSession session(services.forSession(), options.openableSchemes);
    const auto started = session.start(context.installation.systemImage, context.shape);
    if (!started) return fail(failed, started.error());
    std::string line;
    // Nothing is carried out whose answer nobody can read.
    while (std::cout && std::getline(std::cin, line)) {
        const std::string answer = jsonLine(session.answer(line));
        // Answers tell of writes themselves.
        if (const auto unread = context.outcomes->takeProblem()) fail(failed, *unread);
        std::cout << answer << std::endl;
    }
    // The streams keep exceptions to themselves.
    if (std::cin.bad()) return fail(failed, "standard input cannot be read, or a line of it takes too much memory");
    return done;
}

}  // namespace hosts::terminal
