// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace terminal_test {

using namespace kit;

/// `trivel3ctl drive` at work: each command waits for its answer. At the end its input ends, and the test
/// fails unless the program then ends well, with nothing to complain of; a sanitizer complains of leaks.
class Drive {
public:
    explicit Drive(const Trivel3ctl& program, const Trivel3ctl::Arguments& options = {});
    ~Drive();

    /// The answer to one line, whatever the line holds.
    json sendLine(const std::string& line);
    json send(const json& command) { return sendLine(command.dump()); }

    json show() { return send({{"do", "show"}}); }
    json tap(const json& row) { return send({{"do", "tap"}, {"row", row}}); }
    json moveSwitch(const json& row, bool on) { return send({{"do", "switch"}, {"row", row}, {"on", on}}); }
    json back() { return send({{"do", "back"}}); }

    /// In bytes, until now.
    std::size_t peakMemory() const { return _program.peakMemory(); }

    /// Ends it here, for the test to look at what it has left.
    Outcome finish();

private:
    RunningTrivel3ctl _program;
    bool _ended = false;
};

/// The rows of an answer's page, of all sections.
std::vector<json> rowsOf(const json& answer);
std::vector<std::string> labelsOf(const json& answer);
/// The first row of that label; null when there is none.
json rowLabelled(const json& answer, const std::string& label);
/// The events of one kind, in order.
std::vector<json> eventsOf(const json& answer, const std::string& kind);

// Events that more than one test expects.
inline json reloadOf(const json& row, int position, bool animated) {
    return {{"event", "reload"}, {"row", row}, {"position", position}, {"animated", animated}};
}

/// A write of the settings file.
inline json written(bool ok = true) {
    return {{"event", "write"}, {"path", settingsPath}, {"ok", ok}};
}

/// What tells the add-on of it.
inline json notified() {
    return {{"event", "notification"}, {"name", "com.fenwary.trivel3.preferencesChanged"}};
}

}  // namespace terminal_test
