// SPDX-License-Identifier: MIT
#include "hosts/session/outcomes.h"

#include <unistd.h>

#include <cstdio>

#include "hosts/session/printable.h"

namespace hosts {
namespace {

// More than anybody reads on a terminal.
constexpr std::size_t mostHeld = 1000;
// Of a program that nobody looks at meanwhile.
constexpr std::size_t mostRemarks = 20;

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
    if (!_unread) _unread = problem;
}

void Outcomes::notChanged(const platform::Problem& problem, bool) {
    if (!_unsaved) _unsaved = problem;
    _isLastUnsaved = true;
}

void Outcomes::notTold(const platform::Problem& problem) {
    // Of what has not come about there is nothing to tell the phone.
    if (!_untold && !_isLastUnsaved) _untold = problem;
}

std::optional<platform::Problem> Outcomes::takeProblem() {
    auto unread = takeUnread();
    auto unsaved = takeUnsaved();
    auto untold = takeUntold();
    return unsaved ? unsaved : unread ? unread : untold;
}

std::string Outcomes::takeProblemText(Notice& notice) {
    notice.isUnsaved = _unsaved.has_value();
    const auto problem = takeProblem();
    const std::string before = std::exchange(_lastFile, problem ? problem->path : std::string());
    if (!problem || (!notice.isUnsaved && problem->path == before)) return {};
    notice.isProblem = true;
    return notice.isUnsaved ? unsavedText(*problem) : defaultsText(*problem);
}

std::optional<Outcomes::Notice> Outcomes::takeNotice() {
    Notice notice;
    // By itself: it stands beside a change that has come about.
    const auto untold = takeUntold();
    notice.text = takeProblemText(notice);
    if (untold && notice.text.empty()) {
        notice.isProblem = true;
        notice.text = untold->text();
    }
    for (const std::string& remark : takeRemarks())
        notice.text += (notice.text.empty() ? "" : "; ") + remark;
    return notice.text.empty() ? std::nullopt : std::optional(std::move(notice));
}

void Outcomes::remark(const std::string& sentence) {
    std::string line = _program + ": " + printable(sentence) + "\n";
    if (!noteNew(line)) return;
    if (_remarks.size() == mostRemarks) _remarks.erase(_remarks.begin());
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

std::string unsavedText(const platform::Problem& problem) {
    return "Not saved: " + problem.text();
}

std::string defaultsText(const platform::Problem& problem) {
    return "These are defaults: " + problem.text();
}

std::string lossText(const PhoneEvent& loss) {
    if (loss.kind == PhoneEvent::Kind::away)
        return "The phone does not answer: " + loss.name + ". It is tried again when you next use it";
    return "The phone is gone: " + loss.name + "; nothing is saved any more. Start anew once it is back";
}

}  // namespace hosts
