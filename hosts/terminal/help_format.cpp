// SPDX-License-Identifier: MIT
#include "hosts/terminal/help_format.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstddef>
#include <sstream>

#include "hosts/terminal/render/printable.h"

namespace hosts::terminal {
namespace {

// Where descriptions begin.
constexpr std::size_t descriptionColumn = 30;
// Narrower, a column of its own for descriptions leaves no room for words.
constexpr std::size_t narrow = 50;

// 0 where there is no terminal to fit.
std::size_t terminalWidth() {
    winsize size{};
    const bool isTerminal = ::isatty(STDOUT_FILENO) == 1 && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0;
    return isTerminal ? size.ws_col : 0;
}

std::string wrappedLine(const std::string& line, std::size_t width) {
    if (columns(line) <= width) return line;
    const bool hasDescription = line.starts_with(' ') && line.size() > descriptionColumn && width > narrow;
    const std::size_t indent = hasDescription ? descriptionColumn : 0;
    std::string text = line.substr(0, indent);
    bool isFirst = true;
    for (const std::string& part : wrapped(std::string_view(line).substr(indent), width - indent)) {
        text += (isFirst ? "" : "\n" + std::string(indent, ' ')) + part;
        isFirst = false;
    }
    return text;
}

}  // namespace

std::string HelpFormat::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const {
    const std::string help = Formatter::make_help(app, std::move(name), mode);
    const std::size_t width = terminalWidth();
    if (width == 0) return help;
    std::string text;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);)
        text += wrappedLine(line, width) + "\n";
    return text;
}

std::string HelpFormat::make_option_usage(const CLI::Option* option) const {
    if (option->get_type_size_max() != 2) return Formatter::make_option_usage(option);
    return option->get_name(true) + " " + option->get_type_name() + "...";
}

}  // namespace hosts::terminal
