// SPDX-License-Identifier: MIT
#include "drive.h"

#include <exception>
#include <stdexcept>

#include "tests/kit/expectations.h"

namespace terminal_test {

using namespace kit;

namespace {

Trivel3ctl::Arguments driveWith(const Trivel3ctl::Arguments& options) {
    Trivel3ctl::Arguments arguments{"drive"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

}  // namespace

Drive::Drive(const Trivel3ctl& program, const Trivel3ctl::Arguments& options) : _program(program, driveWith(options)) {}

Drive::~Drive() {
    if (_ended) return;
    try {
        expectDone(finish());
    } catch (const std::exception& problem) {
        ADD_FAILURE() << problem.what();
    }
}

Outcome Drive::finish() {
    _ended = true;
    return _program.finish();
}

json Drive::sendLine(const std::string& line) {
    _program.send(line + "\n");
    const auto answer = _program.readLine();
    if (!answer) throw std::runtime_error{"no answer: " + finish().errors};
    return json::parse(*answer);
}

std::vector<json> rowsOf(const json& answer) {
    std::vector<json> rows;
    for (const json& section : answer.at("page").at("sections")) {
        for (const json& row : section.at("rows"))
            rows.push_back(row);
    }
    return rows;
}

std::vector<std::string> labelsOf(const json& answer) {
    std::vector<std::string> labels;
    for (const json& row : rowsOf(answer))
        labels.push_back(row.at("label"));
    return labels;
}

json rowLabelled(const json& answer, const std::string& label) {
    for (const json& row : rowsOf(answer)) {
        if (row.at("label") == label) return row;
    }
    return nullptr;
}

std::vector<json> eventsOf(const json& answer, const std::string& kind) {
    std::vector<json> events;
    for (const json& event : answer.at("events")) {
        if (event.at("event") == kind) events.push_back(event);
    }
    return events;
}

}  // namespace terminal_test
