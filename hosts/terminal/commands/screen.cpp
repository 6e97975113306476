// SPDX-License-Identifier: MIT
#include <unistd.h>

#include "hosts/session/exit_status.h"
#include "hosts/system/module_function.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/render/page_text.h"
#include "hosts/terminal/screen/event_loop.h"
#include "hosts/terminal/screen/screen_signals.h"
#include "hosts/terminal/screen/settings_screen.h"
#include "hosts/terminal/screen/terminal.h"

namespace hosts::terminal {
namespace {

using namespace screen;

int showInstead(OpenedPhone& context, ColourUse colour, const std::string& reason) {
    const int status = runShow(context, {.colour = colour});
    if (status != done) return status;
    return fail(done, reason + "; 'trivel3ctl show PAGE' prints another page, 'trivel3ctl --help' tells the rest");
}

}  // namespace

int runScreen(OpenedPhone& context, ColourUse colour) {
    if (::isatty(STDIN_FILENO) != 1 || ::isatty(STDOUT_FILENO) != 1) {
        return showInstead(context, colour, "no terminal for the interactive screen");
    }
    ModuleObject<TerminalLibrary> module(context.installation.terminalModule(), makeTerminalLibrarySymbol,
                                         "the terminal module");
    const auto library = module.get();
    if (!library) return fail(failed, library.error());
    if (const auto possible = (*library)->canShowScreen(); !possible)
        return showInstead(context, colour, possible.error().reason);
    const TextStyle style = styleForStandardOutput(colour);
    SettingsScreen screen(context, {style.colour, style.unicode});
    const auto started = screen.start();
    if (!started) return fail(failed, started.error());
    const auto events = context.phone->observe(screen.observedFiles(), screen.observedNotifications());
    // Written by the terminal's end, after it has been put back.
    const Outcomes::Hold held(*context.outcomes);
    ScreenSignals signals;
    const auto terminal = (*library)->open(style.colour);
    if (!terminal) return fail(failed, terminal.error());
    const auto signal = EventLoop({screen, **terminal, signals, *events, context.waiting}).run();
    // As a shell tells it of a program that a signal has ended.
    constexpr int endedBySignal = 128;
    return signal ? endedBySignal + *signal : done;
}

}  // namespace hosts::terminal
