// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/services/skip_listener.h"

namespace hosts {

/// Prints on standard error what was passed over on the phone, under the program's name: a line each,
/// and each once. Nothing in a line can steer a terminal.
class SkipLines final : public platform::SkipListener {
public:
    /// While it lives, lines for a terminal wait, since something else is drawn there.
    class Hold {
    public:
        explicit Hold(SkipLines& lines);
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        ~Hold();

    private:
        SkipLines& _lines;
    };

    explicit SkipLines(std::string program) : _program(std::move(program)) {}

    void skipped(std::string_view path, std::string_view reason) override;

private:
    std::string _program;
    /// Of the lines that have been said; a phone may be the reason for very many.
    std::unordered_set<std::size_t> _hashes;
    bool _areHeld = false;
    std::vector<std::string> _held;
    std::size_t _leftOut = 0;
};

}  // namespace hosts
