// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/foundation/result.h"

namespace hosts {

/// Whether the open folder is one on which something is mounted.
bool isMount(int folder);

/// Which folders were mounts when they were last opened as phones: once its phone is unmounted, the bare folder below
/// the mount looks like an empty phone, and what is written there would be hidden by the next mount.
///
/// It is kept as symbolic links to the folders, in a folder for them alone. One that cannot be written remembers
/// nothing, and is no obstacle.
class MountMemory {
public:
    /// `folder` is made when there is something to remember.
    explicit MountMemory(std::string folder) : _folder(std::move(folder)) {}

    /// Remembers what is open as `root` when it is a mount. A problem when it is none, but was one before. `place` is
    /// its canonical path.
    platform::Result<platform::Done> meet(int root, const std::string& place) const;

    void forget(const std::string& place) const;

private:
    std::string entryFor(const std::string& place) const;
    bool has(const std::string& place) const;

    std::string _folder;
};

}  // namespace hosts
