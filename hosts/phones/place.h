// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "hosts/phones/file_attributes.h"
#include "hosts/system/descriptor.h"

namespace hosts {

/// An entry of a folder, whether anything goes by that name yet or not.
struct Place {
    Descriptor folder;  ///< open for reading
    std::string name;
    std::optional<struct stat> old;  ///< of the entry itself, when it was last looked at

    bool holds(mode_t kind) const { return old && (old->st_mode & S_IFMT) == kind; }
};

/// Finds where a file of the phone is to be written. Every look-up starts at the folder `root`, so that wherever a link
/// points, and whatever is changed meanwhile, the place that is found is on the phone.
class PlaceFinder {
public:
    /// Why nothing was found: what was being done, and an errno value.
    struct Failure {
        const char* step;
        int error;
    };

    PlaceFinder(FileCalls& calls, int root) : _calls(calls), _root(root) {}

    /// A symbolic link counts as the place that it leads to when that holds a regular file of the phone; a link to
    /// anything else, or to nothing, is a place itself. Nothing when that cannot be told, or the folder is missing.
    std::optional<Place> find(std::string_view path);

    /// Makes the folders that the path lacks (0755), durably. They stay, whatever comes after.
    bool makeFolders(std::string_view path);

    /// Looks at the entry anew. False when that is not possible.
    bool lookAgain(Place& place);

    /// Of the last operation that gave nothing.
    const Failure& failure() const { return _failure; }

private:
    // The regular file that a link leads to; nothing, with errno set, when it leads to none.
    std::optional<Place> followLink(std::string_view path, const Place& link);
    std::optional<Place> placeIn(Descriptor folder, std::string_view name);
    std::optional<std::string> linkTarget(const Place& link);
    Descriptor openFolder(std::string_view path);
    Descriptor openOrMakeChild(const Descriptor& parent, std::string_view path, const std::string& name);
    bool makeFolder(const Descriptor& parent, const std::string& name);
    bool check(bool succeeded, const char* step);

    FileCalls& _calls;
    int _root;
    Failure _failure{};
};

/// Makes the names in the folder durable. Some file systems have nothing to synchronise in a folder, and refuse.
Given synchroniseFolder(FileCalls& calls, const Descriptor& folder);

}  // namespace hosts
