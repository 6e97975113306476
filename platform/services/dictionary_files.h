// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/foundation/value.h"
#include "platform/services/file_system.h"

namespace platform {

class FileListener;

/// Property-list files whose root is a dictionary (`dictionaryWithContentsOfFile:` and `writeToFile:atomically:`).
///
/// Each reading looks at the file, and what was parsed before serves again only while it is known that reading and
/// parsing would give the same: so whoever reads sees what any process has written by then, between two readings too.
/// What is kept is held until `forget`, which a host calls when what one event has brought about has been drawn or
/// answered.
class TRIVEL3_PLATFORM_EXPORT DictionaryFiles {
public:
    /// `files` outlives the object, and so does the listener, which may be null.
    explicit DictionaryFiles(FileSystem& files, FileListener* listener = nullptr)
        : _files(files), _listener(listener) {}
    DictionaryFiles(const DictionaryFiles&) = delete;
    DictionaryFiles& operator=(const DictionaryFiles&) = delete;

    /// The file's content; null for a file that is missing, cannot be read, is no property list or no dictionary. One
    /// that is no property list is so by two readings with some time between them, since a writer may be half-way.
    ///
    /// A file that cannot be read for a passing reason is told to the listener, and no `edit` is carried out from then
    /// on until `forget`: whoever asks for one has taken defaults for what the file may hold.
    std::shared_ptr<const Dictionary> read(std::string_view path);

    /// Whether that file has been read since the last `forget`.
    bool hasRead(std::string_view path) const { return _known.find(path) != _known.end(); }

    /// What is to become of a file's content, or the problem for which the file stays as it is. It captures by value,
    /// and may be called again on a newer file.
    using Edit = std::function<Result<Dictionary>(Dictionary held)>;

    /// Replaces the file by what `edit` makes of its content, as XML; a file that reads as nothing counts as empty.
    /// What became of it is told to the listener alone.
    ///
    /// On a file system whose changes land together it is only noted, and read from here on as if it were made; `land`
    /// makes it.
    void edit(std::string_view path, const Edit& edit);

    /// Makes the edits that have been noted, each file's on one reading and by one replacement; the listener is told of
    /// each edit in their order. Does nothing where there are none.
    void land();

    /// What was read last of each file, null for what reads as nothing.
    using Contents = std::map<std::string, std::shared_ptr<const Dictionary>, std::less<>>;

    /// Keeps nothing any more, and gives back what it kept.
    Contents forget();

private:
    using Content = std::shared_ptr<const Dictionary>;
    struct Attempt;

    /// A file as it was last read or written.
    struct Known {
        std::shared_ptr<const std::string> bytes;
        Stamp stamp;
        std::optional<Content> content;  ///< nothing until somebody asks for it

        const Content& parsed();
    };

    Known readAnew(std::string_view path);
    /// Reads on until the file is a property list, or is known to be none.
    void settle(std::string_view path, Known& known);
    void tellUnread(Problem problem);
    void note(const std::string& path, const Edit& edit);
    void make(const std::string& path, const std::vector<Edit>& edits);
    Result<Stamp> tryEdits(const std::string& path, const std::vector<Edit>& edits,
                           const std::shared_ptr<Attempt>& attempt);

    /// Edits of one file that have not been made yet, and what they come to on what was read.
    struct Draft {
        std::string path;
        std::vector<Edit> edits;
        Content content;
    };
    Draft* draftOf(std::string_view path);

    FileSystem& _files;
    FileListener* _listener;
    std::vector<Draft> _drafts;  ///< in the order in which the files were first edited
    std::map<std::string, Known, std::less<>> _known;
    std::optional<Problem> _unread;
};

}  // namespace platform
