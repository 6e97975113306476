// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/repetition_account.h"
#include "platform/foundation/result.h"
#include "platform/foundation/value.h"

namespace hosts::terminal {

/// Values as JSON, for programs that read our answers: one of these for each answer. What JSON has no kind for is told
/// in text: data in base64, a date as the platform writes it, a real number that is not finite as "nan", "+infinity" or
/// "-infinity".
///
/// A binary property list can refer to one object many times, and JSON unfolds it each time. All values of an answer
/// together unfold to 100,000 values and 16 MB of text besides what they hold once; a value for which that does not
/// reach is told by its size, as "(2 elements)".
class AnswerValues {
public:
    /// Null for nothing.
    nlohmann::json jsonOf(const std::optional<platform::Value>& value);

    /// Whether the last value was told without loss, and whether by its size alone.
    bool isExact() const { return _isExact; }
    bool isBySize() const { return _isBySize; }

private:
    platform::RepetitionAccount _account{{.values = 100'000, .bytes = std::size_t{16} << 20, .shortText = 0}};
    bool _isExact = true;
    bool _isBySize = false;
    std::vector<platform::Value> _kept;  ///< the account knows objects by their addresses
};

/// A value as JSON without loss. A problem, whose reason names what is in the way, when the value holds
/// what JSON has no kind for, or repeats more than 4 million values or 256 MB of text.
platform::Result<nlohmann::json> faithfulJsonOf(const platform::Value& value);

/// Null for nothing.
template <class T>
nlohmann::json orNull(const std::optional<T>& content) {
    return content ? nlohmann::json(*content) : nlohmann::json();
}

/// The value's kind as the automation interface names it; null for nothing.
nlohmann::json kindOf(const std::optional<platform::Value>& value);

/// JSON on one line, in UTF-8 whatever the strings hold, and without a character that could steer a
/// terminal.
std::string jsonLine(const nlohmann::json& json);

}  // namespace hosts::terminal
