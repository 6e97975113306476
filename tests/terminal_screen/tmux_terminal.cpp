// SPDX-License-Identifier: MIT
#include "tests/terminal_screen/tmux_terminal.h"

#include <chrono>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <thread>
#include <utility>

#include "tests/kit/child_process.h"

namespace terminal_screen_test {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 20s;
constexpr auto pause = 20ms;

std::string inQuotes(const std::string& text) {
    std::string quoted = "'";
    for (const char letter : text)
        quoted += letter == '\'' ? "'\\''" : std::string(1, letter);
    return quoted + "'";
}

// A button and a place as terminals of old report them: each as one byte from the blank on.
std::string mouseReport(int button, std::size_t line, std::size_t column) {
    std::string report = "\x1b[M";
    report += static_cast<char>(32 + button);
    report += static_cast<char>(33 + column);
    report += static_cast<char>(33 + line);
    return report;
}

}  // namespace

bool waitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(pause);
    }
    return true;
}

void TmuxTerminal::writeScripts(const std::vector<std::string>& command, const Setup& setup) const {
    std::string run = "#!/bin/sh\ncd " + inQuotes(_folder.path()) + "\necho $$ > process\n";
    run += "unset NO_COLOR LANG COLUMNS LINES\nexport TERM=" + setup.kind + " LC_ALL=" + setup.locale +
           " ESCDELAY=25 DBUS_SESSION_BUS_ADDRESS=disabled:\n"
           "export HOME=\"$PWD\" PATH=\"$PWD/programs:$PATH\" XDG_CONFIG_HOME= XDG_DATA_HOME= XDG_CACHE_HOME=\n";
    for (const auto& [name, value] : setup.environment)
        run += "export " + name + "=" + inQuotes(value) + "\n";
    run += "exec";
    for (const std::string& word : command)
        run += " " + inQuotes(word);
    kit::writeText(_folder.path() / "run", run + "\n");
    kit::writeText(_folder.path() / "shell",
                   "cd " + inQuotes(_folder.path()) +
                       "\nstty -g > before\ntrap : INT QUIT\nsh ./run\necho $? > status\nstty -g "
                       "> after\ntouch ended\nexec cat\n");
    kit::writeText(_folder.path() / "configuration",
                   "set -g status off\nset -g escape-time 0\nset -g default-terminal tmux-256color\n");
}

TmuxTerminal::TmuxTerminal(const std::vector<std::string>& command, const Setup& setup) {
    writeScripts(command, setup);
    tmux({"-f", _folder.path() / "configuration", "new-session", "-d", "-x", std::to_string(setup.width), "-y",
          std::to_string(setup.height), "sh " + inQuotes(_folder.path() / "shell")});
}

TmuxTerminal::~TmuxTerminal() {
    tmux({"kill-server"});
}

std::string TmuxTerminal::tmux(std::vector<std::string> arguments) const {
    std::vector<std::string> command{TEST_TMUX, "-u", "-S", socket()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return kit::ChildProcess(command).finish().output;
}

void TmuxTerminal::press(const std::vector<std::string>& keys) {
    std::vector<std::string> arguments{"send-keys"};
    arguments.insert(arguments.end(), keys.begin(), keys.end());
    tmux(arguments);
}

void TmuxTerminal::type(const std::string& text) {
    tmux({"send-keys", "-l", text});
}

void TmuxTerminal::click(std::size_t line, std::size_t column) {
    constexpr int press = 0;
    constexpr int release = 3;
    type(mouseReport(press, line, column) + mouseReport(release, line, column));
}

void TmuxTerminal::turnWheelDown(std::size_t line, std::size_t column) {
    constexpr int wheelDown = 65;
    type(mouseReport(wheelDown, line, column));
}

void TmuxTerminal::resize(std::size_t width, std::size_t height) {
    tmux({"resize-window", "-x", std::to_string(width), "-y", std::to_string(height)});
}

void TmuxTerminal::close() {
    tmux({"kill-pane"});
}

void TmuxTerminal::record() {
    tmux({"pipe-pane", "cat > " + inQuotes(_folder.path() / "sent")});
}

std::string TmuxTerminal::recorded(std::string_view part) const {
    std::string sent;
    waitUntil([&] {
        std::ifstream file(_folder.path() / "sent", std::ios::binary);
        sent.assign(std::istreambuf_iterator<char>(file), {});
        return sent.find(part) != sent.npos;
    });
    return sent;
}

std::string TmuxTerminal::text() const {
    return tmux({"capture-pane", "-p"});
}

std::string TmuxTerminal::colouredText() const {
    return tmux({"capture-pane", "-p", "-e"});
}

std::vector<std::string> TmuxTerminal::lines() const {
    return kit::linesOf(text());
}

std::optional<std::size_t> TmuxTerminal::lineWith(std::string_view part) const {
    const auto all = lines();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].find(part) != std::string::npos) return i;
    }
    return std::nullopt;
}

std::string TmuxTerminal::rowWith(std::string_view part) const {
    for (const std::string& line : lines()) {
        if (line.find(part) != std::string::npos) return line;
    }
    return {};
}

bool TmuxTerminal::waitFor(std::string_view part) const {
    return waitUntil([&] { return text().find(part) != std::string::npos; });
}

bool TmuxTerminal::waitUntilGone(std::string_view part) const {
    return waitUntil([&] { return text().find(part) == std::string::npos; });
}

bool TmuxTerminal::waitForRow(std::string_view part, std::string_view state) const {
    return waitUntil([&] { return rowWith(part).find(state) != std::string::npos; });
}

void TmuxTerminal::settle() const {
    std::string before = text();
    waitUntil([&] {
        std::this_thread::sleep_for(pause);
        const std::string now = text();
        return std::exchange(before, now) == now;
    });
}

std::string TmuxTerminal::noted(const char* name) const {
    std::ifstream file(_folder.path() / name);
    std::string line;
    std::getline(file, line);
    return line;
}

void TmuxTerminal::installProgram(const std::string& name, const std::string& text) const {
    const std::filesystem::path path = _folder.path() / "programs" / name;
    std::filesystem::create_directories(path.parent_path());
    kit::writeText(path, "#!/bin/sh\n" + text + "\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

std::string TmuxTerminal::waitForFile(const std::string& name) const {
    waitUntil([&] { return !noted(name.c_str()).empty(); });
    return noted(name.c_str());
}

int TmuxTerminal::process() const {
    if (!waitUntil([this] { return !noted("process").empty(); })) throw std::runtime_error("the program did not start");
    return std::stoi(noted("process"));
}

bool TmuxTerminal::hasEnded() const {
    return std::filesystem::exists(_folder.path() / "ended");
}

std::optional<int> TmuxTerminal::waitForEnd() const {
    if (!waitUntil([this] { return hasEnded(); })) return std::nullopt;
    return std::stoi(noted("status"));
}

bool TmuxTerminal::isRestored() const {
    return !noted("before").empty() && noted("before") == noted("after");
}

}  // namespace terminal_screen_test
