// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/curses_terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "hosts/terminal/screen/curses_input.h"
#include "hosts/terminal/screen/ink_attributes.h"
#include "hosts/terminal/screen/last_resort.h"

namespace hosts::terminal::screen {
namespace {

// How long a lone escape character is waited with for the rest of a key's sequence, in milliseconds:
// enough for a slow line, little enough not to be felt.
constexpr int escapeDelay = 50;

}  // namespace

class CursesTerminal::State {
public:
    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        if (!_screen) return;
        ::endwin();
        ::delscreen(_screen);
    }

    bool open() {
        _screen = ::newterm(nullptr, stdout, stdin);
        return _screen != nullptr;
    }

    void setUp(bool wantsColour) {
        ::cbreak();
        ::noecho();
        ::nonl();
        ::intrflush(stdscr, FALSE);
        ::keypad(stdscr, TRUE);
        ::nodelay(stdscr, TRUE);
        if (!std::getenv("ESCDELAY")) ::set_escdelay(escapeDelay);
        ::mouseinterval(0);
        ::mousemask(BUTTON1_PRESSED | BUTTON4_PRESSED | BUTTON5_PRESSED, nullptr);
        colour = wantsColour && ::has_colors();
        if (colour) startColours();
        _lastResort.arm();
    }

    void paintLine(int number, const Line& line) const {
        ::wmove(stdscr, number, static_cast<int>(line.indent));
        for (const Span& span : line.spans) {
            ::wattrset(stdscr, static_cast<int>(attributesOf(span.ink, line.selected, colour)));
            ::waddstr(stdscr, span.text.c_str());
        }
        ::wattrset(stdscr, A_NORMAL);
    }

    bool colour = false;

private:
    LastResort _lastResort;
    SCREEN* _screen = nullptr;
};

CursesTerminal::CursesTerminal(std::unique_ptr<State> state) : _state(std::move(state)) {}

CursesTerminal::~CursesTerminal() = default;

std::unique_ptr<CursesTerminal> CursesTerminal::open(bool wantsColour, std::string& error) {
    auto state = std::make_unique<State>();
    if (!state->open()) {
        error = "the terminal cannot be opened";
        return nullptr;
    }
    state->setUp(wantsColour);
    return std::unique_ptr<CursesTerminal>(new CursesTerminal(std::move(state)));
}

bool CursesTerminal::hasColour() const {
    return _state->colour;
}

Size CursesTerminal::size() const {
    return {static_cast<std::size_t>(::getmaxx(stdscr)), static_cast<std::size_t>(::getmaxy(stdscr))};
}

void CursesTerminal::paint(const Picture& picture) {
    ::werase(stdscr);
    int number = 0;
    for (const Line& line : picture.lines)
        _state->paintLine(number++, line);
    ::curs_set(picture.caret ? 1 : 0);
    if (picture.caret) {
        ::wmove(stdscr, static_cast<int>(picture.caret->line), static_cast<int>(picture.caret->column));
    }
    ::wrefresh(stdscr);
}

std::optional<Event> CursesTerminal::nextEvent() {
    wint_t key = 0;
    const int status = ::wget_wch(stdscr, &key);
    if (status == ERR) return std::nullopt;
    return decodeKey(status, key);
}

void CursesTerminal::adoptSize() {
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) return;
    ::resizeterm(size.ws_row, size.ws_col);
    ::clearok(stdscr, TRUE);
}

void CursesTerminal::suspend() {
    ::endwin();
}

void CursesTerminal::resume() {
    ::reset_prog_mode();
    adoptSize();
    ::clearok(stdscr, TRUE);
    ::wrefresh(stdscr);
}

}  // namespace hosts::terminal::screen
