// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/observed_content.h"

#include <utility>

#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {
namespace {

std::string changeLine(const KeyChange& change) {
    return printable(change.key) + ": " + valueSummary(change.before) + " -> " + valueSummary(change.after) + "\n";
}

}  // namespace

nlohmann::json changeJson(const KeyChange& change, AnswerValues& values) {
    return {{"key", change.key}, {"old", values.jsonOf(change.before)}, {"new", values.jsonOf(change.after)}};
}

std::string changeText(const KeyChange& change) {
    std::string text = changeLine(change);
    for (const KeyChange& entry : differences(change.before, change.after))
        text += "  " + changeLine(entry);
    return text;
}

ObservedContent::ObservedContent(platform::DictionaryFiles& dictionaries, platform::PreferenceAccess::ObservedFile file)
    : _dictionaries(&dictionaries), _file(std::move(file)), _content(read()) {}

// A missing or malformed file reads as an empty one, as it does for the pane.
platform::Dictionary ObservedContent::read() const {
    const auto content = _dictionaries->read(_file.path);
    return content ? *content : platform::Dictionary();
}

std::vector<KeyChange> ObservedContent::takeChanges() {
    platform::Dictionary now = read();
    std::vector<KeyChange> changes = differences(_content, now);
    _content = std::move(now);
    return changes;
}

}  // namespace hosts::terminal
