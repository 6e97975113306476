// SPDX-License-Identifier: MIT
#define NCURSES_NOMACROS 1
#include <curses.h>
#include <sys/ioctl.h>
#include <termcap.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <iterator>
#include <utility>

#include "hosts/terminal/screen/curses/last_resort.h"
#include "hosts/terminal/screen/terminal.h"

namespace hosts::terminal::screen {
namespace {

// How long a lone escape character is waited with for the rest of a key's sequence, in milliseconds:
// enough for a slow line, little enough not to be felt.
constexpr int escapeDelay = 50;

enum ColourPair : short { usualPair, goodPair, warningPair, barPair, barKeyPair, selectedPair, fieldPair };

constexpr short terminalsOwn = -1;

// How an ink is drawn. Without colour, boldness and inverse video tell inks apart.
struct Look {
    Ink ink;
    ColourPair pair;
    attr_t besideColour;
    attr_t withoutColour;
};

constexpr Look looks[] = {
    {Ink::plain, usualPair, A_NORMAL, A_NORMAL},
    {Ink::strong, usualPair, A_BOLD, A_BOLD},
    {Ink::faint, usualPair, A_DIM, A_DIM},
    {Ink::quiet, usualPair, A_DIM, A_DIM},
    {Ink::good, goodPair, A_NORMAL, A_BOLD},
    {Ink::warning, warningPair, A_BOLD, A_BOLD},
    {Ink::bar, barPair, A_NORMAL, A_REVERSE},
    {Ink::barTitle, barPair, A_BOLD, A_REVERSE | A_BOLD},
    {Ink::barKey, barKeyPair, A_BOLD, A_REVERSE | A_BOLD},
    {Ink::field, fieldPair, A_NORMAL, A_UNDERLINE},
    {Ink::button, usualPair, A_NORMAL, A_NORMAL},
    {Ink::focusedButton, selectedPair, A_NORMAL, A_REVERSE},
    {Ink::scroll, usualPair, A_BOLD, A_BOLD},
    {Ink::scrollTrack, usualPair, A_DIM, A_DIM},
};

attr_t coloured(ColourPair pair, attr_t more) {
    return static_cast<attr_t>(COLOR_PAIR(pair)) | more;
}

void startColours() {
    ::start_color();
    ::use_default_colors();
    ::init_pair(goodPair, COLOR_GREEN, terminalsOwn);
    ::init_pair(warningPair, COLOR_RED, terminalsOwn);
    ::init_pair(barPair, COLOR_WHITE, COLOR_BLUE);
    ::init_pair(barKeyPair, COLOR_YELLOW, COLOR_BLUE);
    ::init_pair(selectedPair, COLOR_BLACK, COLOR_CYAN);
    ::init_pair(fieldPair, COLOR_BLACK, COLOR_WHITE);
}

attr_t attributesOf(Ink ink, bool isSelected, bool colour) {
    const Look& look = *std::ranges::find(looks, ink, &Look::ink);
    const bool isBesideRow = ink == Ink::scroll || ink == Ink::scrollTrack;
    if (!isSelected || isBesideRow) return colour ? coloured(look.pair, look.besideColour) : look.withoutColour;
    // Without boldness: many terminals draw bold black in grey.
    if (colour) return coloured(selectedPair, A_NORMAL);
    return A_REVERSE | (ink == Ink::faint || ink == Ink::quiet ? A_NORMAL : A_BOLD);
}

Event keyEvent(Key key) {
    Event event;
    event.key = key;
    return event;
}

Event decodeMouse() {
    MEVENT mouse;
    if (::getmouse(&mouse) != OK || mouse.x < 0 || mouse.y < 0) return {};
    Event event;
    event.line = static_cast<std::size_t>(mouse.y);
    event.column = static_cast<std::size_t>(mouse.x);
    if (mouse.bstate & (BUTTON1_PRESSED | BUTTON1_CLICKED)) event.key = Key::click;
    if (mouse.bstate & BUTTON4_PRESSED) event.key = Key::wheelUp;
    if (mouse.bstate & BUTTON5_PRESSED) event.key = Key::wheelDown;
    return event;
}

constexpr std::pair<wint_t, Key> functionKeys[] = {
    {KEY_UP, Key::up},        {KEY_DOWN, Key::down},           {KEY_LEFT, Key::left},        {KEY_RIGHT, Key::right},
    {KEY_PPAGE, Key::pageUp}, {KEY_NPAGE, Key::pageDown},      {KEY_HOME, Key::home},        {KEY_END, Key::end},
    {KEY_ENTER, Key::enter},  {KEY_BACKSPACE, Key::backspace}, {KEY_DC, Key::deleteForward}, {KEY_BTAB, Key::backTab},
};

Event decodeFunctionKey(wint_t key) {
    if (key == KEY_MOUSE) return decodeMouse();
    const auto found = std::ranges::find(functionKeys, key, &std::pair<wint_t, Key>::first);
    return keyEvent(found == std::end(functionKeys) ? Key::none : found->second);
}

// In UTF-8, or nothing in a locale that is not UTF-8 and for a character beyond ASCII.
Event decodeCharacter(wint_t character) {
    Event event;
    std::array<char, MB_LEN_MAX> bytes;
    std::mbstate_t state{};
    const std::size_t length = std::wcrtomb(bytes.data(), static_cast<wchar_t>(character), &state);
    const bool isAscii = character < 0x80;
    if (length == static_cast<std::size_t>(-1) || (!isAscii && length < 2)) return event;
    event.key = Key::character;
    event.character.assign(bytes.data(), length);
    return event;
}

// `status` is what `wget_wch` gave. The key is `none` for what this program has no use for.
Event decodeKey(int status, wint_t key) {
    constexpr wint_t escape = 0x1B;
    constexpr wint_t erase = 0x7F;
    constexpr wint_t firstPrintable = 0x20;
    if (status == KEY_CODE_YES) return decodeFunctionKey(key);
    if (key == '\r' || key == '\n') return keyEvent(Key::enter);
    if (key == '\t') return keyEvent(Key::tab);
    if (key == escape) return keyEvent(Key::escape);
    if (key == erase || key == '\b') return keyEvent(Key::backspace);
    const bool isControl = key < firstPrintable || (key > erase && key < 0xA0);
    return isControl ? Event{} : decodeCharacter(key);
}

// Stands while curses has the terminal.
class CursesTerminal final : public Terminal {
public:
    CursesTerminal() = default;
    CursesTerminal(const CursesTerminal&) = delete;
    CursesTerminal& operator=(const CursesTerminal&) = delete;
    ~CursesTerminal() override;

    platform::Result<platform::Done> open(bool wantsColour);

    Size size() const override;
    void paint(const Picture& picture) override;
    std::optional<Event> nextEvent() override;
    void adoptSize() override;
    void suspend() override { ::endwin(); }
    void resume() override;

private:
    void paintLine(int number, const Line& line) const;

    LastResort _lastResort;
    SCREEN* _screen = nullptr;
    bool _colour = false;
};

CursesTerminal::~CursesTerminal() {
    if (!_screen) return;
    ::endwin();
    ::delscreen(_screen);
}

platform::Result<platform::Done> CursesTerminal::open(bool wantsColour) {
    _screen = ::newterm(nullptr, stdout, stdin);
    if (!_screen) return platform::Problem{.reason = "the terminal cannot be opened"};
    ::cbreak();
    ::noecho();
    ::nonl();
    ::intrflush(stdscr, FALSE);
    ::keypad(stdscr, TRUE);
    ::nodelay(stdscr, TRUE);
    if (!std::getenv("ESCDELAY")) ::set_escdelay(escapeDelay);
    ::mouseinterval(0);
    ::mousemask(BUTTON1_PRESSED | BUTTON4_PRESSED | BUTTON5_PRESSED, nullptr);
    _colour = wantsColour && ::has_colors();
    if (_colour) startColours();
    _lastResort.arm();
    return platform::Done();
}

Size CursesTerminal::size() const {
    return {static_cast<std::size_t>(::getmaxx(stdscr)), static_cast<std::size_t>(::getmaxy(stdscr))};
}

void CursesTerminal::paint(const Picture& picture) {
    ::werase(stdscr);
    int number = 0;
    for (const Line& line : picture.lines)
        paintLine(number++, line);
    ::curs_set(picture.caret ? 1 : 0);
    if (picture.caret) {
        ::wmove(stdscr, static_cast<int>(picture.caret->line), static_cast<int>(picture.caret->column));
    }
    ::wrefresh(stdscr);
}

void CursesTerminal::paintLine(int number, const Line& line) const {
    ::wmove(stdscr, number, static_cast<int>(line.indent));
    for (const Span& span : line.spans) {
        ::wattrset(stdscr, static_cast<int>(attributesOf(span.ink, line.selected, _colour)));
        ::waddstr(stdscr, span.text.c_str());
    }
    ::wattrset(stdscr, A_NORMAL);
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

void CursesTerminal::resume() {
    ::reset_prog_mode();
    adoptSize();
    ::clearok(stdscr, TRUE);
    ::wrefresh(stdscr);
}

class CursesLibrary final : public TerminalLibrary {
public:
    platform::Result<platform::Done> canShowScreen() override {
        const char* const name = std::getenv("TERM");
        if (!name || !*name) return platform::Problem{.reason = "TERM is not set"};
        const std::string terminal = "the terminal TERM=" + std::string(name);
        if (::tgetent(nullptr, name) != 1) return platform::Problem{.reason = "nothing is known of " + terminal};
        if (!::tgetstr("cm", nullptr)) return platform::Problem{.reason = terminal + " cannot show a screen"};
        return platform::Done{};
    }

    platform::Result<std::unique_ptr<Terminal>> open(bool wantsColour) override {
        auto terminal = std::make_unique<CursesTerminal>();
        auto opened = terminal->open(wantsColour);
        if (!opened) return std::move(opened).error();
        return std::unique_ptr<Terminal>(std::move(terminal));
    }
};

}  // namespace

}  // namespace hosts::terminal::screen

extern "C" __attribute__((visibility("default"))) void trivel3MakeTerminalLibrary(
    std::unique_ptr<hosts::terminal::screen::TerminalLibrary>& library) {
    library = std::make_unique<hosts::terminal::screen::CursesLibrary>();
}
