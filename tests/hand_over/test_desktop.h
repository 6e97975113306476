// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/kit/temporary_folder.h"

namespace kit {

/// A user's home folder and PATH with nothing in them: no programs, no handlers, no settings, and
/// none of the machine's. The process's environment points there for as long as this lives.
class TestDesktop {
public:
    TestDesktop();
    TestDesktop(const TestDesktop&) = delete;
    TestDesktop& operator=(const TestDesktop&) = delete;
    ~TestDesktop();

    std::string home() const { return _folder / "home"; }
    /// A path that is not below the home folder.
    std::string elsewhere(const std::string& below) const { return _folder / below; }
    void setEnvironment(const std::string& name, const std::optional<std::string>& value);

    /// Installs a program that notes its arguments and then does what the shell script says.
    void installProgram(const std::string& name, const std::string& script = "exit 0");
    /// The arguments of each of the program's runs.
    std::vector<std::vector<std::string>> runsOf(const std::string& program) const;

    /// Installs an application that claims the MIME types. Its program is there unless named.
    void installApplication(const std::string& identifier, const std::string& name, const std::string& types,
                            const std::string& executable = "/bin/true");
    /// Adds to the user's choice of applications: "TYPE=IDENTIFIER.desktop" under "[GROUP]".
    void chooseApplication(const std::string& group, const std::string& line);

    /// What the probe prints, line by line.
    std::vector<std::string> probe(std::vector<std::string> arguments) const;
    /// The same for what it prints as "NAME: VALUE".
    std::map<std::string, std::string> probeNamed(std::vector<std::string> arguments) const;

    /// Every file below the home folder.
    std::vector<std::string> filesAtHome() const;

private:
    std::string applications() const { return home() + "/.local/share/applications"; }

    TemporaryFolder _folder;
    std::map<std::string, std::optional<std::string>> _before;
};

}  // namespace kit
