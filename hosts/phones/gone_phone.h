// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/system/descriptor.h"
#include "platform/foundation/result.h"

namespace hosts {

/// What has become of a phone's open folder that is of no more use, in words that go on from its name: "has been
/// deleted", "does not answer (…)". Nothing while it is there. In a folder that has been deleted every look-up fails as
/// it does for a file that is missing, so whoever takes a file for missing asks first.
std::optional<std::string> whyGone(int root);

/// The same as the reason why a file of the phone could be neither read nor written.
std::optional<platform::Problem> goneProblem(int root, std::string_view path, const char* step);

/// Waits for a phone's folder to go: deleted, unmounted, or on a mount that has died. One that is moved has not gone.
class GoneWatch {
public:
    /// `root` stays open for as long as the object lives. The descriptor `waiting`, of epoll, becomes readable when the
    /// folder may have gone.
    GoneWatch(int root, int waiting);

    /// Whether the kernel tells of it; else whoever waits asks `next` from time to time.
    bool isTold() const { return _isTold; }

    /// What has become of the folder, once, as `whyGone` says it.
    std::optional<std::string> next();

private:
    bool watchFolders();
    bool isDue();

    int _root;
    Descriptor _told;
    /// The table of mounts: one to be waken by, and one to ask whether it has changed since it was last asked.
    Descriptor _mountsWait;
    Descriptor _mountsAsked;
    /// The mount that the folder is on; nothing where the table does not have it.
    std::optional<std::uint64_t> _mount;
    bool _isTold = false;
    bool _isOver = false;
};

}  // namespace hosts
