// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/kit/child_process.h"
#include "tests/kit/temporary_folder.h"

namespace kit {

using nlohmann::json;

/// The real trivel3ctl of the staging tree, run as a process in an environment of its own: a home of
/// its own, no session bus, no terminal, UTF-8.
class Trivel3ctl {
public:
    using Arguments = std::vector<std::string>;

    Trivel3ctl();

    /// Variables to set for the runs to come, or to do without.
    void set(const std::string& variable, const std::string& value) { _environment[variable] = value; }
    void unset(const std::string& variable) { _environment.erase(variable); }
    /// Every run to come works on this phone. One that is empty gets a folder of its own first, since the program
    /// remarks on a folder that held no phone.
    void usePhone(const std::string& folder);
    /// A command that is to run the program, and its arguments.
    void runThrough(Arguments wrapper) { _wrapper = std::move(wrapper); }

    Outcome run(const Arguments& arguments, const std::string& input = {}) const;
    /// The JSON that a run which goes well prints.
    json runForJson(const Arguments& arguments) const;
    /// With a terminal of so many columns as standard output.
    Outcome runOnTerminal(const Arguments& arguments, unsigned short columns) const;
    /// With the file, a device say, as standard output.
    Outcome runInto(const std::string& file, const Arguments& arguments, const std::string& input = {}) const;

    Arguments commandFor(const Arguments& arguments) const;
    const Environment& environment() const { return _environment; }

    /// A folder for what the test needs beside the phone; it goes at the end.
    const TemporaryFolder& folder() const { return _folder; }
    /// Where the default phone is made.
    std::string defaultPhone() const { return _folder / "data/trivel3/phone"; }
    /// Where temporary files are made.
    std::string temporaries() const { return _folder / "tmp"; }

private:
    TemporaryFolder _folder;
    Environment _environment;
    Arguments _wrapper;
};

/// The program at work, to be talked to.
class RunningTrivel3ctl : public ChildProcess {
public:
    RunningTrivel3ctl(const Trivel3ctl& program, const Trivel3ctl::Arguments& arguments)
        : ChildProcess(program.commandFor(arguments), program.environment()) {}
};

}  // namespace kit
