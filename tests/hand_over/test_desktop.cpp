// SPDX-License-Identifier: MIT
#include "test_desktop.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/kit/child_process.h"

namespace kit {
namespace {

namespace fs = std::filesystem;

void setOrUnset(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
        ::setenv(name.c_str(), value->c_str(), 1);
    } else {
        ::unsetenv(name.c_str());
    }
}

void append(const std::string& file, const std::string& text) {
    fs::create_directories(fs::path{file}.parent_path());
    std::ofstream{file, std::ios::binary | std::ios::app} << text;
}

// Ends each argument and, for the list's own end, each run.
constexpr char endOfArgument = '\x1F';
constexpr char endOfRun = '\x1E';

}  // namespace

TestDesktop::TestDesktop() {
    fs::create_directories(home());
    fs::create_directories(_folder / "bin");
    setEnvironment("HOME", home());
    setEnvironment("PATH", _folder / "bin");
    setEnvironment("XDG_DATA_DIRS", _folder / "nothing");
    setEnvironment("XDG_CONFIG_DIRS", _folder / "nothing");
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DOCUMENTS_DIR",
                             "XDG_CURRENT_DESKTOP", "EMAIL", "DISPLAY", "WAYLAND_DISPLAY", "BROWSER"}) {
        setEnvironment(name, std::nullopt);
    }
}

TestDesktop::~TestDesktop() {
    for (const auto& [name, value] : _before)
        setOrUnset(name, value);
}

void TestDesktop::setEnvironment(const std::string& name, const std::optional<std::string>& value) {
    const char* const before = ::getenv(name.c_str());
    _before.try_emplace(name, before == nullptr ? std::nullopt : std::optional<std::string>{before});
    setOrUnset(name, value);
}

void TestDesktop::installProgram(const std::string& name, const std::string& script) {
    const std::string program = _folder / ("bin/" + name);
    const std::string note =
        "printf '%s\\037' \"$@\" >>'" + program + ".runs'; printf '\\036' >>'" + program + ".runs'";
    writeText(program, "#!/bin/sh\n" + note + "\n" + script + "\n");
    fs::permissions(program, fs::perms::owner_all);
}

std::vector<std::vector<std::string>> TestDesktop::runsOf(const std::string& program) const {
    std::vector<std::vector<std::string>> runs;
    std::ifstream file{_folder / ("bin/" + program + ".runs"), std::ios::binary};
    for (std::string run; std::getline(file, run, endOfRun);) {
        std::istringstream arguments{run};
        runs.emplace_back();
        for (std::string argument; std::getline(arguments, argument, endOfArgument);)
            runs.back().push_back(argument);
    }
    return runs;
}

void TestDesktop::installApplication(const std::string& identifier, const std::string& name, const std::string& types,
                                     const std::string& executable) {
    writeText(
        applications() + "/" + identifier + ".desktop",
        "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + executable + " %u\nMimeType=" + types + "\n");
    append(applications() + "/mimeinfo.cache", "[MIME Cache]\n");
    std::istringstream all{types};
    for (std::string type; std::getline(all, type, ';');)
        append(applications() + "/mimeinfo.cache", type + "=" + identifier + ".desktop;\n");
}

void TestDesktop::chooseApplication(const std::string& group, const std::string& line) {
    append(home() + "/.config/mimeapps.list", "[" + group + "]\n" + line + "\n");
}

std::vector<std::string> TestDesktop::probe(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {TEST_PROBE, TEST_MODULES});
    ChildProcess process{arguments};
    std::vector<std::string> lines;
    while (auto line = process.readLine())
        lines.push_back(*std::move(line));
    EXPECT_EQ(process.wait(), 0) << "of the probe";
    return lines;
}

std::map<std::string, std::string> TestDesktop::probeNamed(std::vector<std::string> arguments) const {
    std::map<std::string, std::string> values;
    for (const std::string& line : probe(std::move(arguments))) {
        const auto colon = line.find(": ");
        values[line.substr(0, colon)] = colon == std::string::npos ? "" : line.substr(colon + 2);
    }
    return values;
}

std::vector<std::string> TestDesktop::filesAtHome() const {
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator{home()}) {
        if (!entry.is_directory()) files.push_back(entry.path().lexically_relative(home()).string());
    }
    std::ranges::sort(files);
    return files;
}

}  // namespace kit
