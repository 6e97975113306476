// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/phones/gone_phone.h"
#include "hosts/phones/phone_file_system.h"
#include "hosts/system/descriptor.h"

namespace hosts {

/// Keeps an eye on files of a phone that any process may change, and that may not be there yet, and on the phone
/// itself. The kernel is asked to tell; on file systems that are elsewhere, whose changes it does not learn of, the
/// files are opened and read every second, since what is asked of a path may be answered from a mount's memory.
class FileWatch {
public:
    /// `files` outlives the object; `paths` are the phone's own.
    FileWatch(PhoneFileSystem& files, std::vector<std::string> paths);

    /// Becomes readable when there may be a change, or more of the other descriptor.
    int descriptor() const { return _waiting.get(); }

    /// Another descriptor that `descriptor` stands for too, until `waitForNoOther`.
    void alsoWaitFor(int other);
    void waitForNoOther();

    /// The path of a file that is another, or may hold something else, than when this last gave its path. Nothing any
    /// more once the phone is gone.
    std::optional<std::string> nextChange();

    /// What has become of the phone's folder, once, when it has gone: as `whyGone` says it.
    std::optional<std::string> nextGoing();

private:
    struct File {
        std::string path;
        std::optional<platform::Stamp> stamp;
        /// What stands for its content, where that is read; nothing for a file that is not there.
        std::optional<std::string> number;
        bool isChanged = false;
    };

    void waitFor(int descriptor);
    void watchAll();
    void watchFolderOf(std::string path);
    bool watch(const std::string& path, int flags, unsigned events);
    void lookAtAll(bool wasTold);
    bool isOtherThanSeen(File& file) const;

    PhoneFileSystem& _files;
    std::vector<File> _watched;
    Descriptor _told;
    Descriptor _timer;
    Descriptor _waiting;
    GoneWatch _gone;
    int _other = -1;
};

}  // namespace hosts
