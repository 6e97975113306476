// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/text_style.h"

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <string_view>

namespace hosts::terminal {
namespace {

constexpr std::size_t usualWidth = 80;
constexpr std::size_t leastWidth = 40;
// Lines longer than this are hard to read, however wide the terminal is.
constexpr std::size_t mostWidth = 100;

std::size_t terminalWidth() {
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
    const char* columns = std::getenv("COLUMNS");
    const unsigned long number = columns ? std::strtoul(columns, nullptr, 10) : 0;
    return number > 0 ? number : usualWidth;
}

}  // namespace

TextStyle styleForStandardOutput() {
    std::setlocale(LC_CTYPE, "");
    const bool terminal = ::isatty(STDOUT_FILENO) == 1;
    const char* kind = std::getenv("TERM");
    const char* noColour = std::getenv("NO_COLOR");
    const bool dumb = !kind || std::string_view(kind) == "dumb";
    TextStyle style;
    style.width = std::clamp(terminalWidth(), leastWidth, mostWidth);
    style.colour = terminal && !dumb && (!noColour || !*noColour);
    style.unicode = std::string_view(::nl_langinfo(CODESET)) == "UTF-8";
    // Labels are UTF-8 whatever the terminal shows, and so are their widths.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    return style;
}

}  // namespace hosts::terminal
