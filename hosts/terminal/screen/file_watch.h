// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <vector>

#include "hosts/system/descriptor.h"

namespace hosts::terminal::screen {

/// Tells when files of the phone have become others. It asks, instead of being told: a phone's folder
/// may lie on a file system that tells of no changes, and its files may not be there yet.
class FileWatch {
public:
    /// `folder` is the folder of this machine that stands for the phone's root; `paths` are the
    /// phone's own.
    FileWatch(const std::string& folder, std::vector<std::string> paths);

    /// Whether any file is another one, or holds something else, than when this was last asked.
    bool takeChange();

private:
    struct State {
        dev_t device = 0;
        ino_t number = 0;
        off_t size = 0;
        timespec changed{};
        bool operator==(const State& other) const;
    };
    /// Nothing for a file that is not there.
    std::optional<State> stateOf(const std::string& path) const;
    std::vector<std::optional<State>> states() const;

    Descriptor _root;
    std::vector<std::string> _paths;
    std::vector<std::optional<State>> _states;
};

}  // namespace hosts::terminal::screen
