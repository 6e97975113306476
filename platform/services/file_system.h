// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/foundation/result.h"

namespace platform {

/// What tells one state of a file from another without reading it.
struct Stamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;          ///< in bytes
    std::int64_t modified = 0;       ///< in nanoseconds of the file system's clock
    std::int64_t statusChanged = 0;  ///< likewise

    /// Whether the stamp was old enough, beside the file system's clock, when it was taken: whatever is done to the
    /// file later then shows in its next stamp. False where that clock cannot be known.
    bool isSettled = false;

    /// Whether both may be of one state; they are, when one of them is settled.
    bool isSameAs(const Stamp& other) const {
        return device == other.device && inode == other.inode && size == other.size && modified == other.modified &&
               statusChanged == other.statusChanged;
    }
};

/// What a file is to hold.
struct NewContent {
    std::string bytes;

    /// Whether nothing that the file held is in it, because that was not understood. Then the old file is kept where
    /// its user finds it.
    bool isAnew = false;
};

/// What is to become of a file, as a pure function of what it holds: nothing where there is no such file, or it
/// cannot be read. It gives the new content, or the problem for which the file stays as it is. It may be called
/// again on a newer file, so it captures by value and has no other effect than its answer.
using Change = std::function<Result<NewContent>(std::optional<std::string_view> held)>;

/// The phone's file system, as far as the pane needs it. Paths are the phone's own and absolute
/// ("/var/mobile/Library/Preferences/…"); where they lie on the machine at hand is the host's
/// business.
class TRIVEL3_PLATFORM_EXPORT FileSystem {
public:
    /// The most bytes that a file is read with when the caller names no other limit: far above any
    /// property list of settings, and little enough to be refused before it hurts.
    static constexpr std::size_t usualReadLimit = std::size_t{64} << 20;

    virtual ~FileSystem() = default;

    /// The stamp of a regular file; a problem where there is none or it cannot be reached.
    virtual Result<Stamp> look(std::string_view path) const = 0;

    /// Reads a whole regular file into `contents`, whose capacity is reused. The stamp was taken before the reading. A
    /// problem, with `contents` empty, when there is no such file, it is no regular file, it holds more than `limit`
    /// bytes, or it cannot be read; a passing one where what the file holds may be readable later.
    virtual Result<Stamp> readFile(std::string_view path, std::string& contents, std::size_t limit) const = 0;

    Result<Stamp> readFile(std::string_view path, std::string& contents) const {
        return readFile(path, contents, usualReadLimit);
    }

    /// Reads the file once more, a while later and through a look-up of its own: for whoever has found in it what a
    /// writer that is half-way may have left there, and asks whether it stays so.
    virtual Result<Stamp> readAgain(std::string_view path, std::string& contents) const {
        return readFile(path, contents);
    }

    /// The names of a folder's entries, without "." and "..", in byte order. A problem when there is no
    /// such folder, it cannot be read, or it has more entries than the host is ready to list.
    virtual Result<std::vector<std::string>> listFolder(std::string_view path) const = 0;

    /// Reads the file, asks `change` what is to become of it, and replaces it, or makes it, in one step: any reader
    /// finds either the old content or the new one, whole, and so does whoever comes after a crash. A file that holds
    /// the new content already is not replaced, and one that is found to be newer than what was read is read again. A
    /// file that cannot be read for a passing reason is not changed, and its problem is a passing one. On a problem the
    /// old file stands as it was, unless all that failed was making the new file's name durable, and then the new one
    /// stands, whole.
    virtual Result<Stamp> changeFile(std::string_view path, const Change& change) = 0;

    /// Whether the way there costs a noticeable while, so that what has been read of a file serves for the whole turn.
    virtual bool isFar() const { return false; }

    /// Whether the changes of a turn are to be made together, at its end: one replacement for each file.
    virtual bool landsTogether() const { return false; }

    /// These files will be read soon, and these folders listed, each once: a file system that is far fetches them all
    /// at once, and gives them to who asks first, within this turn. What was expected before and not asked for is
    /// dropped.
    virtual void expect(std::span<const std::string>, std::span<const std::string>) const {}

    /// The turn is over.
    virtual void endTurn() {}
};

}  // namespace platform
