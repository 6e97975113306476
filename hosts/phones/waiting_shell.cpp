// SPDX-License-Identifier: MIT
#include "hosts/phones/waiting_shell.h"

#include <charconv>
#include <random>
#include <utility>

namespace hosts {
namespace {

using platform::Problem;
using platform::Result;

constexpr std::size_t mostOutput = std::size_t{256} << 10;

// Nothing that a command prints by chance.
std::string freshMark() {
    std::random_device random;
    return "trivel3-" + std::to_string(random()) + "-" + std::to_string(random());
}

}  // namespace

WaitingShell::WaitingShell(PipedProcess process) : _process(std::move(process)), _mark(freshMark()) {}

void WaitingShell::send(const std::string& command) {
    _out += "{ " + command + "\n} </dev/null 2>&1; s=$?; echo; echo " + _mark + " $s\n";
    ++_waiting;
    std::string came;
    // What cannot be sent at once goes with the waiting.
    if (_isAlive) _process.exchange(_out, came, std::chrono::milliseconds{0});
    _in += came;
}

Result<WaitingShell::Answer> WaitingShell::takeAnswer() {
    if (_waiting == 0) return Problem{.reason = "the shell has been asked nothing"};
    const std::string end = "\n" + _mark + " ";
    for (std::string came; _isAlive; came.clear()) {
        const std::size_t at = _in.find(end);
        const std::size_t lineEnd = at == _in.npos ? at : _in.find('\n', at + end.size());
        if (lineEnd != _in.npos) {
            Answer answer{0, _in.substr(0, at)};
            std::from_chars(_in.data() + at + end.size(), _in.data() + lineEnd, answer.status);
            while (answer.output.ends_with('\n'))
                answer.output.pop_back();
            _in.erase(0, lineEnd + 1);
            --_waiting;
            return answer;
        }
        if (_in.size() > mostOutput) return lost("the shell says more than it has been asked");
        const PipedProcess::Came what = _process.exchange(_out, came, answerPatience);
        _in += came;
        if (what == PipedProcess::Came::nothing) return lost("the shell does not answer");
        if (what == PipedProcess::Came::stopped) return lost(stoppedWaiting);
        if (what == PipedProcess::Came::end && came.empty()) {
            const std::string complaint = _process.complaints();
            return lost(complaint.empty() ? "the shell has ended" : complaint);
        }
    }
    return lost("the connection to the shell is lost");
}

Result<WaitingShell::Answer> WaitingShell::run(const std::string& command) {
    send(command);
    for (; _waiting > 1;) {
        if (auto earlier = takeAnswer(); !earlier) return earlier;
    }
    return takeAnswer();
}

Problem WaitingShell::lost(std::string reason) {
    _isAlive = false;
    return {.reason = std::move(reason), .isPassing = true};
}

std::string shellQuoted(std::string_view word) {
    std::string quoted = "'";
    for (const char each : word)
        quoted += each == '\'' ? std::string("'\\''") : std::string(1, each);
    return quoted + "'";
}

}  // namespace hosts
