// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "hosts/terminal/render/picture.h"

namespace hosts::terminal::screen {

/// Buttons side by side, one of which can have the focus.
class ButtonRow {
public:
    explicit ButtonRow(std::vector<std::string> labels) : _labels(std::move(labels)) {}

    std::size_t count() const { return _labels.size(); }
    /// `focused` is the button's number; nothing when none has the focus.
    Line compose(std::optional<std::size_t> focused) const;
    /// The number of the button at this column; nothing between them.
    std::optional<std::size_t> buttonAt(std::size_t column) const;

private:
    std::vector<std::string> _labels;
};

}  // namespace hosts::terminal::screen
