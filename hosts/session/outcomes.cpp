// SPDX-License-Identifier: MIT
#include "hosts/session/outcomes.h"

#include <unistd.h>

#include <cstdio>

#include "hosts/session/printable.h"

namespace hosts {
namespace {

// More than anybody reads on a terminal.
constexpr std::size_t mostHeld = 1000;

// A phone may be the reason for very many lines. Those beyond this may be said again.
constexpr std::size_t mostRemembered = std::size_t{32} << 20;

void say(const std::string& line) {
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

void Outcomes::passedOver(const platform::Problem& problem) {
    if (!_tellsPassedOver) return;
    std::string line = _program + ": skipped " + printable(problem.path) + ": " + printable(problem.reason) + "\n";
    if (noteNew(line)) sayOrHold(std::move(line));
}

void Outcomes::notRead(const platform::Problem& problem) {
    if (!_problem) _problem = problem;
}

void Outcomes::notChanged(const platform::Problem& problem, bool) {
    if (!_problem) _problem = problem;
}

void Outcomes::remark(const std::string& sentence) {
    std::string line = _program + ": " + printable(sentence) + "\n";
    if (!noteNew(line)) return;
    _remarks.push_back(sentence);
    sayOrHold(std::move(line));
}

// By the lines themselves: who knows how a line's hash is made could have another one passed over in silence.
bool Outcomes::noteNew(const std::string& line) {
    if (_said.contains(line)) return false;
    if (_saidBytes + line.size() <= mostRemembered) {
        _said.insert(line);
        _saidBytes += line.size();
    }
    return true;
}

void Outcomes::sayOrHold(std::string line) {
    if (!_areHeld) {
        say(line);
    } else if (_held.size() < mostHeld) {
        _held.push_back(std::move(line));
    } else {
        ++_leftOut;
    }
}

Outcomes::Hold::Hold(Outcomes& outcomes) : _outcomes(outcomes) {
    _outcomes._areHeld = ::isatty(STDERR_FILENO) == 1;
}

Outcomes::Hold::~Hold() {
    for (const std::string& line : _outcomes._held)
        say(line);
    if (_outcomes._leftOut > 0) {
        say(_outcomes._program + ": " + std::to_string(_outcomes._leftOut) +
            " lines more; standard error that goes into a file has them all\n");
    }
    _outcomes._areHeld = false;
    _outcomes._held.clear();
    _outcomes._leftOut = 0;
}

}  // namespace hosts
