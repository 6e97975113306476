// SPDX-License-Identifier: MIT
#include "programs.h"

#include <filesystem>

#include "tests/kit/expectations.h"

namespace command_lines_test {

Programs::Programs() {
    std::filesystem::create_directory(home());
    environment = kit::ownEnvironment();
    for (const char* variable : {"TRIVEL3_PHONE", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CONFIG_HOME", "MANPATH"})
        environment.erase(variable);
    environment["PATH"] = std::string(TEST_PROGRAMS) + ":/usr/bin:/bin";
    environment["HOME"] = home();
    environment["XDG_RUNTIME_DIR"] = folder.path();
    environment["LC_ALL"] = "C.UTF-8";
}

kit::Outcome Programs::run(const Words& command, const std::string& input) const {
    // By the shell, which finds a program by its name.
    Words found = {"/bin/sh", "-c", "exec \"$@\"", "sh"};
    found.insert(found.end(), command.begin(), command.end());
    kit::ChildProcess process(found, environment);
    process.send(input);
    return process.finish();
}

std::map<std::string, std::string> Programs::offered(Words command) const {
    command.insert(command.begin() + 1, "complete-words");
    const kit::Outcome outcome = run(command);
    kit::expectDone(outcome);
    Words lines = kit::linesOf(outcome.output);
    if (lines.empty()) return {{"(nothing)", ""}};
    if (lines.front() != "words") return {{lines.front(), ""}};
    lines.erase(lines.begin());
    std::map<std::string, std::string> words;
    for (const std::string& line : lines) {
        const std::size_t tab = line.find('\t');
        words[line.substr(0, tab)] = line.substr(std::min(line.size(), tab + 1));
    }
    return words;
}

}  // namespace command_lines_test
