// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "hosts/phones/key_change.h"
#include "hosts/terminal/render/value_json.h"
#include "platform/services/dictionary_files.h"
#include "platform/services/preference_access.h"

namespace hosts::terminal {

/// {"key","old","new"}
nlohmann::json changeJson(const KeyChange& change, AnswerValues& values);
/// A line "KEY: old -> new". For a dictionary, which such a line tells only the size of, an indented
/// line of the same kind follows for each entry that changed.
std::string changeText(const KeyChange& change);

/// What one of the pane's files held when it was last read.
class ObservedContent {
public:
    /// `dictionaries` outlives the object.
    ObservedContent(platform::DictionaryFiles& dictionaries, platform::PreferenceAccess::ObservedFile file);

    const std::string& notification() const { return _file.notification; }
    const std::string& path() const { return _file.path; }

    /// Reads the file again and tells what has changed since the last time.
    std::vector<KeyChange> takeChanges();

private:
    platform::Dictionary read() const;

    platform::DictionaryFiles* _dictionaries;
    platform::PreferenceAccess::ObservedFile _file;
    platform::Dictionary _content;
};

}  // namespace hosts::terminal
