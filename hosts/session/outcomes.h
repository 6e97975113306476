// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/services/file_listener.h"

namespace hosts {

/// What becomes of the phone's files in a session, for the program to tell its user: a change that did not come about
/// is kept until the program takes it; what was passed over goes to standard error, if the user wants to know it,
/// under the program's name, a line each, and each once. Nothing in a line can steer a terminal.
class Outcomes : public platform::FileListener {
public:
    /// While it lives, lines for a terminal wait, since something else is drawn there.
    class Hold {
    public:
        explicit Hold(Outcomes& outcomes);
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        ~Hold();

    private:
        Outcomes& _outcomes;
    };

    Outcomes(std::string program, bool tellsPassedOver)
        : _program(std::move(program)), _tellsPassedOver(tellsPassedOver) {}

    /// Whether the user wants to know what is passed over.
    bool tellsPassedOver() const { return _tellsPassedOver; }

    /// The first change that has not come about since this was last asked; nothing where all have.
    std::optional<platform::Problem> takeProblem() { return std::exchange(_problem, std::nullopt); }

    void passedOver(const platform::Problem& problem) override;
    void changed(std::string_view, const platform::Dictionary&, const platform::Dictionary&) override {}
    void notChanged(const platform::Problem& problem, bool wasTried) override;

private:
    std::string _program;
    bool _tellsPassedOver;
    std::optional<platform::Problem> _problem;
    /// Of the lines that have been said; a phone may be the reason for very many.
    std::unordered_set<std::size_t> _hashes;
    bool _areHeld = false;
    std::vector<std::string> _held;
    std::size_t _leftOut = 0;
};

}  // namespace hosts
