// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "hosts/system/descriptor.h"

namespace hosts {

/// A file's new content on its way to the file's name: ".NAME.XXXXXX.tmp" beside NAME, where each X
/// is a random letter or digit. Its writer holds a lock on it for as long as it goes by that name.
/// It goes with this object unless it has been published.
///
/// Operations give false, with errno set, when they fail.
class TemporaryFile {
public:
    /// For the entry `name` of the open folder; both outlive this object.
    TemporaryFile(FileCalls& calls, const Descriptor& folder, const std::string& name)
        : _calls(calls), _folder(folder), _name(name) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    bool create(mode_t mode);
    /// Writes all of `contents`.
    bool fill(std::string_view contents);
    /// As giveOwner and giveMode do.
    bool setOwner(uid_t owner, gid_t group);
    bool setMode(mode_t mode);
    /// Makes the content and all that belongs to it durable.
    bool synchronise();
    /// Puts the file in the place of the entry that it is for.
    bool publish();

private:
    bool claim();
    void discard();

    FileCalls& _calls;
    const Descriptor& _folder;
    const std::string& _name;
    std::string _temporaryName;
    Descriptor _file;
};

/// fsync that an arriving signal does not end.
bool synchroniseFile(FileCalls& calls, const Descriptor& file);

/// Removes what writers of the entry `name` that died half-way have left in the folder: temporary
/// files of its pattern on which nobody holds a lock. One whose lock cannot be asked for stays.
void removeAbandonedTemporaries(FileCalls& calls, const Descriptor& folder, std::string_view name);

}  // namespace hosts
