// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace hosts::terminal {

/// Help as CLI11 prints it, but for lines that are wider than the terminal, which go on below their own text, and for
/// arguments that come by twos, of which both are named.
class HelpFormat final : public CLI::Formatter {
public:
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
    std::string make_option_usage(const CLI::Option* option) const override;
};

}  // namespace hosts::terminal
