// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "hosts/phones/phone_listener.h"
#include "hosts/phones/place.h"
#include "platform/services/file_system.h"

namespace hosts {

class TemporaryFile;

/// One atomic change of a file of the phone: a new file beside the old one, made durable, then put in its place by one
/// rename. The old file's permissions, owner and extended attributes are kept, as far as the file system keeps them; a
/// new file gets 0644. Folders that the path lacks are made (0755) and stay, even when the write then fails.
///
/// A symbolic link at the path stays, and the file that it leads to is replaced, when that is a regular file inside the
/// phone. A link to anything else, or to nothing, is itself replaced, and so are a FIFO, a socket and a device. A
/// folder is not replaced: the write fails.
///
/// Our programs take turns by a lock on the file's folder, which leaves nothing behind. One that is refused, or not had
/// in two seconds, is done without. Programs that know no such lock are met by reading the old file once more right
/// before the new one takes its place: when it is another by then, the change is made on that one.
///
/// Where the file system replaces nothing by renaming, the old file waits beside it, under `asideNameOf` its name,
/// until the new one has the name: whoever finds no file by the name itself reads that one.
class AtomicChange {
public:
    /// All outlive the object; the listener may be null.
    AtomicChange(FileCalls& calls, int root, PhoneListener* listener)
        : _calls(calls), _finder(calls, root), _listener(listener), _root(root) {}

    /// The problem, if there is one. Nothing also when the file held the new content already.
    std::optional<platform::Problem> make(std::string_view path, const platform::Change& change);

private:
    // The old file, as far as it could be read.
    struct Held {
        Descriptor file;                    ///< open for reading; nothing when there is none
        std::optional<struct stat> status;  ///< as the open file tells it
        std::optional<std::string> bytes;
        bool isAside = false;       ///< it goes by the name that a file aside has
        bool isUnreadable = false;  ///< there is a regular file, but it cannot be read, now or later
    };
    enum class Step { done, failed, again };

    bool find(const platform::Change& change);
    Step tryOn(const platform::Change& change);
    Step read(Held& held);
    Descriptor openOld(const std::string& name);
    bool fill(TemporaryFile& temporary, Held& held, std::string_view contents);
    // Whether the old file is still what was read; nothing when that cannot be told.
    std::optional<bool> isAsRead(const Held& held);
    bool putInPlace(TemporaryFile& temporary, const Held& held);
    bool keepOld(const Held& held);
    bool moveOldAway();
    void putOldBack();
    bool rename(const std::string& from, const std::string& to);
    bool publish(TemporaryFile& temporary);
    bool publishInSteps(TemporaryFile& temporary);
    bool check(bool succeeded, const char* step);
    void remark(const std::string& sentence);

    FileCalls& _calls;
    PlaceFinder _finder;
    PhoneListener* _listener;
    int _root;
    std::optional<Place> _place;
    std::string _path;
    std::string _movedTo;  ///< the name that the old file has on the phone, when it was moved out of the way
    std::optional<platform::Problem> _problem;
};

}  // namespace hosts
