// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/kit/temporary_folder.h"

namespace terminal_screen_test {

/// Whether that came to be so, in twenty seconds.
bool waitUntil(const std::function<bool()>& condition);

/// A terminal of its own in which a program runs: a tmux server that nobody else talks to. What is
/// waited for is waited for twenty seconds at most.
class TmuxTerminal {
public:
    struct Setup {
        std::size_t width = 80;
        std::size_t height = 24;
        std::string kind = "tmux-256color";
        std::string locale = "C.UTF-8";
        /// More of the program's environment.
        std::map<std::string, std::string> environment = {};
    };

    /// Runs the program with a home folder of its own, in a shell that notes how the terminal is set
    /// before and after it.
    TmuxTerminal(const std::vector<std::string>& command, const Setup& setup);
    ~TmuxTerminal();
    TmuxTerminal(const TmuxTerminal&) = delete;
    TmuxTerminal& operator=(const TmuxTerminal&) = delete;

    /// Keys by tmux's names: "Down", "Enter", "C-c", or a character.
    void press(const std::vector<std::string>& keys);
    /// Bytes as they are.
    void type(const std::string& text);
    /// The left button, or a turn of the wheel, at this place from 0.
    void click(std::size_t line, std::size_t column);
    void turnWheelDown(std::size_t line, std::size_t column);
    void resize(std::size_t width, std::size_t height);
    /// Takes the terminal away from its program.
    void close();

    /// The lines that are shown, without blanks at their ends.
    std::vector<std::string> lines() const;
    std::string text() const;
    /// The same with the escape sequences of colours and the like.
    std::string colouredText() const;
    /// From here on, what the program sends the terminal is kept.
    void record();
    /// What it has sent, once `part` has been among it.
    std::string recorded(std::string_view part) const;
    /// The line with this text in it, from 0; nothing when there is none.
    std::optional<std::size_t> lineWith(std::string_view part) const;
    /// That line's text; empty when there is none.
    std::string rowWith(std::string_view part) const;

    /// Whether the text came to be shown, or was no longer shown, in time.
    bool waitFor(std::string_view part) const;
    bool waitUntilGone(std::string_view part) const;
    /// Whether a line with `part` came to hold `state` too.
    bool waitForRow(std::string_view part, std::string_view state) const;

    /// Waits until what is shown stays as it is.
    void settle() const;

    /// Puts a program for the program to find; the text is a shell's.
    void installProgram(const std::string& name, const std::string& text) const;
    const std::filesystem::path& home() const { return _folder.path(); }
    /// The first line of a file in the home folder, once it is there; empty when it did not come.
    std::string waitForFile(const std::string& name) const;

    /// The program's process.
    int process() const;
    bool hasEnded() const;
    /// The program's exit status; nothing when it did not end in time.
    std::optional<int> waitForEnd() const;
    /// Whether the terminal is set as it was before the program, which has ended.
    bool isRestored() const;

private:
    std::string tmux(std::vector<std::string> arguments) const;
    std::string noted(const char* name) const;
    std::string socket() const { return _folder.path() / "tmux"; }
    void writeScripts(const std::vector<std::string>& command, const Setup& setup) const;

    kit::TemporaryFolder _folder;
};

}  // namespace terminal_screen_test
