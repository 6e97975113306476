// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/kit/child_process.h"
#include "tests/kit/temporary_folder.h"

namespace command_lines_test {

/// The programs of the staging tree, as their user calls them: by name, with a home of their own.
class Programs {
public:
    using Words = std::vector<std::string>;

    Programs();

    /// A program of ours or of the system, with the words of its command line.
    kit::Outcome run(const Words& command, const std::string& input = {}) const;

    /// What the program offers in place of the last word: the words, with what they stand for, or in their place
    /// "files" or "folders". Expects it to go well.
    std::map<std::string, std::string> offered(Words command) const;

    std::string home() const { return folder / "home"; }

    kit::TemporaryFolder folder;
    kit::Environment environment;
};

}  // namespace command_lines_test
