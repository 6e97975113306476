// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "hosts/phones/file_attributes.h"
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
    /// Whether the file system tells that the file has a name, which some do not.
    bool countsNames() const { return _countsNames; }
    /// Writes all of `contents`.
    bool fill(std::string_view contents);
    Given setOwner(uid_t owner, gid_t group);
    Given setMode(mode_t mode);
    bool copyAttributes(const Descriptor& from);
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
    bool _countsNames = true;
};

/// fsync that an arriving signal does not end.
bool synchroniseFile(FileCalls& calls, const Descriptor& file);

/// The name ".NAME.aside" of the file that NAME was, while a new one takes its place in more than one step.
std::string asideNameOf(std::string_view name);

/// Removes what writers of the entry `name` that died half-way have left in the folder: temporary
/// files of its pattern on which nobody holds a lock. One whose lock cannot be asked for stays. While there is such an
/// entry, also the file aside: it is an older one.
void removeAbandoned(FileCalls& calls, const Descriptor& folder, std::string_view name, bool isThere);

/// unlinkat; whether that works makes no difference to anybody.
void removeEntry(FileCalls& calls, const Descriptor& folder, const std::string& entry);

}  // namespace hosts
