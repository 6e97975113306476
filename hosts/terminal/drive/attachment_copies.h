// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace hosts::terminal {

/// Copies of what pages attach to e-mails, for whoever drives the program to look at. They are its to
/// remove: it may read them after the program has ended.
class AttachmentCopies {
public:
    /// Writes a copy into a new folder of its own below $TMPDIR, or /tmp. Nothing when that fails, or
    /// when `name` is no plain file name.
    static std::optional<std::string> write(const std::string& name, const std::string& data);
};

}  // namespace hosts::terminal
