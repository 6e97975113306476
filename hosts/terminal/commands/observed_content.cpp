// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/observed_content.h"

#include <utility>

#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/value_text.h"

namespace hosts::terminal {
namespace {

std::vector<Change> differences(const platform::Dictionary& before, const platform::Dictionary& after) {
    std::vector<Change> changes;
    for (const auto& [key, value] : before) {
        auto now = after.valueForKey(key);
        if (now != value) changes.push_back({key, value, std::move(now)});
    }
    for (const auto& [key, value] : after) {
        if (!before.contains(key)) changes.push_back({key, std::nullopt, value});
    }
    return changes;
}

std::string changeLine(const Change& change) {
    return printable(change.key) + ": " + valueSummary(change.before) + " -> " + valueSummary(change.after) + "\n";
}

platform::Dictionary dictionaryOf(const std::optional<platform::Value>& value) {
    const platform::Dictionary* content = value ? value->dictionary() : nullptr;
    return content ? *content : platform::Dictionary();
}

}  // namespace

nlohmann::json changeJson(const Change& change, AnswerValues& values) {
    return {{"key", change.key}, {"old", values.jsonOf(change.before)}, {"new", values.jsonOf(change.after)}};
}

std::string changeText(const Change& change) {
    std::string text = changeLine(change);
    for (const Change& entry : differences(dictionaryOf(change.before), dictionaryOf(change.after)))
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

std::vector<Change> ObservedContent::takeChanges() {
    platform::Dictionary now = read();
    std::vector<Change> changes = differences(_content, now);
    _content = std::move(now);
    return changes;
}

}  // namespace hosts::terminal
