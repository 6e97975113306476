// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <compare>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace reliability_test {

/// What has changed on a disk since it was last flushed, and with that every state in which a crash of the machine may
/// leave it.
///
/// The disk is made of parts: each name in a folder; each block of a file; each file's length; permissions and owner of
/// each file and folder. After a crash a part has any one of the values that it has had since its last flush, that of
/// the flush included, whichever values other parts have. So nothing holds of order or of things that are done in one
/// step, but that a name which is given to another file stands for one of the two. Flushing a file flushes its blocks,
/// length, permissions and owner; flushing a folder flushes its names, permissions and owner, not what the names stand
/// for.
///
/// A length takes the value of each end of a block on its way. What a file's length takes in and no block on the disk
/// holds is zeros.
class CrashingDisk {
public:
    /// Everything in the folder is flushed. Links in it are followed by nobody.
    explicit CrashingDisk(const std::string& folder);

    // What a program has just done, to open files.
    void madeFile(int folder, const std::string& name, int file);
    void madeFolder(int folder, const std::string& name);
    void wrote(int file, std::size_t offset, std::string_view bytes);
    void changedAttributes(int file);
    void renamed(int folder, const std::string& from, const std::string& to);
    void unlinked(int folder, const std::string& name);
    void flushed(int file);

    /// Calls `visit` for each way in which a crash may leave the parts. Some look the same.
    void forEachState(const std::function<void()>& visit);

    /// A file, folder or link of the state that is visited.
    struct Entry {
        std::string path;  ///< below the folder, whose entries come before those of the folders in it
        mode_t mode;
        std::pair<uid_t, gid_t> owner;
        std::string content;    ///< of a file, or where a link leads to
        std::string otherPath;  ///< where the file has come by another name already

        auto operator<=>(const Entry&) const = default;
    };
    std::vector<Entry> state() const;

private:
    // The values since the last flush, oldest first.
    class AnyPart {
    public:
        virtual ~AnyPart() = default;
        virtual std::size_t values() const = 0;
        std::size_t left = 0;  ///< which of them the crash has left
    };

    template <class Value>
    class Part final : public AnyPart {
    public:
        explicit Part(Value value) : _values{std::move(value)} {}
        std::size_t values() const override { return _values.size(); }
        void set(Value value) {
            if (!(value == now())) _values.push_back(std::move(value));
        }
        void flush() { _values.erase(_values.begin(), _values.end() - 1); }
        const Value& now() const { return _values.back(); }
        const Value& leftValue() const { return _values[left]; }

    private:
        std::vector<Value> _values;
    };

    struct Node;
    using NodePointer = std::shared_ptr<Node>;  // null where a name stands for nothing
    struct Node {
        explicit Node(const struct stat& status);

        void write(std::size_t offset, std::string_view bytes);
        void name(const std::string& name, NodePointer node);
        void flush();
        std::vector<AnyPart*> parts();
        std::string contentLeft() const;

        mode_t kind;
        std::string target;  ///< of a link
        Part<mode_t> permissions;
        Part<std::pair<uid_t, gid_t>> owner;
        Part<std::size_t> length{0};
        std::vector<Part<std::string>> blocks;
        std::map<std::string, Part<NodePointer>> names;
    };

    NodePointer add(const struct stat& status);
    NodePointer scan(const std::string& path);
    NodePointer nodeOf(int file) const;
    void addEntries(const Node& folder, const std::string& path, std::map<const Node*, std::string>& paths,
                    std::vector<Entry>& entries) const;

    std::vector<NodePointer> _all;
    std::map<std::pair<dev_t, ino_t>, NodePointer> _byInode;
    NodePointer _root;
};

/// Makes the files of a state in an empty folder.
void rebuild(const std::vector<CrashingDisk::Entry>& state, const std::string& folder);

}  // namespace reliability_test
