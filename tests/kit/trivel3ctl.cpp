// SPDX-License-Identifier: MIT
#include "tests/kit/trivel3ctl.h"

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace kit {

namespace {

using hosts::Descriptor;

// What sanitizers are told reaches the program too.
constexpr const char* passedOn[] = {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"};

Outcome carryOn(ChildProcess& program, const std::string& input) {
    program.send(input);
    return program.finish();
}

}  // namespace

Trivel3ctl::Trivel3ctl() {
    std::filesystem::create_directory(temporaries());
    _environment = {{"PATH", "/usr/bin:/bin"},
                    {"HOME", _folder / "home"},
                    {"XDG_DATA_HOME", _folder / "data"},
                    {"XDG_RUNTIME_DIR", _folder / "run"},
                    {"XDG_STATE_HOME", _folder / "state"},
                    {"TMPDIR", temporaries()},
                    {"LC_ALL", "C.UTF-8"}};
    for (const char* name : passedOn) {
        if (const char* value = std::getenv(name)) set(name, value);
    }
}

Trivel3ctl::Arguments Trivel3ctl::commandFor(const Arguments& arguments) const {
    Arguments command = _wrapper;
    command.push_back(TEST_TRIVEL3CTL);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

Outcome Trivel3ctl::run(const Arguments& arguments, const std::string& input) const {
    RunningTrivel3ctl program(*this, arguments);
    return carryOn(program, input);
}

json Trivel3ctl::runForJson(const Arguments& arguments) const {
    const Outcome outcome = run(arguments);
    if (outcome.status != 0) throw std::runtime_error{outcome.errors};
    return json::parse(outcome.output);
}

Outcome Trivel3ctl::runOnTerminal(const Arguments& arguments, unsigned short columns) const {
    int master = -1;
    int slave = -1;
    const winsize size{40, columns, 0, 0};
    if (::openpty(&master, &slave, nullptr, nullptr, &size) != 0) {
        throw std::system_error{errno, std::generic_category(), "openpty"};
    }
    ::fcntl(master, F_SETFD, FD_CLOEXEC);
    Descriptor terminal{slave};
    ::fcntl(slave, F_SETFD, FD_CLOEXEC);
    ChildProcess program(commandFor(arguments), _environment, slave, Descriptor{master});
    // The other end meets the end of the output when nobody holds this one open.
    terminal = {};
    return program.finish();
}

Outcome Trivel3ctl::runInto(const std::string& file, const Arguments& arguments, const std::string& input) const {
    const Descriptor output{::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644)};
    if (!output.isOpen()) throw std::system_error{errno, std::generic_category(), file};
    ChildProcess program(commandFor(arguments), _environment, output.get());
    return carryOn(program, input);
}

}  // namespace kit
