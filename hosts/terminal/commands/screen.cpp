// SPDX-License-Identifier: MIT
#include <unistd.h>

#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/exit_status.h"
#include "hosts/terminal/render/page_text.h"
#include "hosts/terminal/screen/curses_terminal.h"
#include "hosts/terminal/screen/event_loop.h"
#include "hosts/terminal/screen/file_watch.h"
#include "hosts/terminal/screen/screen_signals.h"
#include "hosts/terminal/screen/settings_screen.h"

namespace hosts::terminal {
namespace {

using namespace screen;

int showInstead(ProgramContext& context, const std::string& reason) {
    const int status = runShow(context, {});
    if (status != done) return status;
    return fail(done, reason + "; 'trivel3ctl show PAGE' prints another page, 'trivel3ctl --help' tells the rest");
}

std::vector<std::string> observedPaths(const SettingsScreen& screen) {
    std::vector<std::string> paths;
    for (const auto& file : screen.observedFiles())
        paths.push_back(file.path);
    return paths;
}

}  // namespace

int runScreen(ProgramContext& context) {
    if (::isatty(STDIN_FILENO) != 1 || ::isatty(STDOUT_FILENO) != 1) {
        return showInstead(context, "no terminal for the interactive screen");
    }
    std::string error;
    if (const auto possible = canShowScreen(); !possible) return showInstead(context, possible.error().reason);
    const TextStyle style = styleForStandardOutput();
    SettingsScreen screen(context, {style.colour, style.unicode});
    if (!screen.start(error)) return fail(failed, error);
    FileWatch files(context.phoneFolder, observedPaths(screen));
    // Written by the terminal's end, after it has been put back.
    std::optional<SkipLines::Hold> held;
    if (context.skips) held.emplace(*context.skips);
    ScreenSignals signals;
    auto notifications = screen.notifications().observe();
    const auto terminal = CursesTerminal::open(style.colour);
    if (!terminal) return fail(failed, terminal.error().text());
    EventLoop({screen, **terminal, signals, files, std::move(notifications)}).run();
    return done;
}

}  // namespace hosts::terminal
