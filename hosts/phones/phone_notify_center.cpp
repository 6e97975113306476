// SPDX-License-Identifier: MIT
#include "hosts/phones/phone_notify_center.h"

#include <optional>

#include "hosts/system/deadline.h"
#include "hosts/system/piped_process.h"

namespace hosts {
namespace {

using platform::Problem;

// What a shell answers for a command that is not there, and for one that it may not run.
constexpr int noSuchCommand = 127;
constexpr int mostSendings = 3;

}  // namespace

std::string PhoneNotifyCenter::commandFor(const std::string& name) const {
    return _command.text + " " + shellQuoted(name);
}

void PhoneNotifyCenter::postNotification(std::string_view name) {
    _bus.postNotification(name);
    if (!canPost() || name.find('\0') != name.npos) return;
    _waiting.emplace_back(name);
    sendWaiting();
}

bool PhoneNotifyCenter::sendWaiting() {
    const auto shell = _shell();
    if (!shell) return false;
    if ((*shell)->waiting() == 0) _sent = 0;
    for (; _sent < _waiting.size(); ++_sent)
        (*shell)->send(commandFor(_waiting[_sent]));
    return true;
}

void PhoneNotifyCenter::settle() {
    const Deadline patience{answerPatience};
    for (int tries = 0; !_waiting.empty() && tries < mostSendings && patience.left() > 0;) {
        const auto shell = sendWaiting() ? _shell() : platform::Result<WaitingShell*>(Problem{});
        if (!shell) break;
        const auto answer = (*shell)->takeAnswer();
        if (answer) {
            take(*answer);
        } else {
            ++tries;
            _sent = 0;
        }
    }
    if (_waiting.empty()) return;
    _waiting.clear();
    _sent = 0;
    if (_listener) _listener->notTold({.reason = "written, but the phone was not told: its shell does not answer"});
}

void PhoneNotifyCenter::take(const WaitingShell::Answer& answer) {
    const std::string name = _waiting.front();
    _waiting.pop_front();
    --_sent;
    if (answer.status == 0) {
        ++_echoes[name];
        return;
    }
    if (answer.status == noSuchCommand && !_command.isUsers) {
        _command.text.clear();
        if (_listener) _listener->remark("the phone has no notifyutil, so its programs are not told of changes");
        return;
    }
    const std::string said = answer.output.substr(answer.output.rfind('\n') + 1);
    const std::string why = "'" + commandFor(name) + "' ended with status " + std::to_string(answer.status) +
                            (said.empty() ? "" : ": " + said);
    if (_listener) _listener->notTold({.reason = "written, but the phone was not told: " + why});
}

bool PhoneNotifyCenter::takeEcho(const std::string& name) {
    const auto echo = _echoes.find(name);
    if (echo == _echoes.end() || echo->second == 0) return false;
    --echo->second;
    return true;
}

}  // namespace hosts
