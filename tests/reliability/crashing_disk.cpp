// SPDX-License-Identifier: MIT
#include "crashing_disk.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "tests/kit/temporary_folder.h"

namespace reliability_test {

namespace {

namespace fs = std::filesystem;

// The least that disks write at once. A settings file has several of them.
constexpr std::size_t blockSize = 512;
constexpr mode_t permissionBits = 07777;

void must(int result, const std::string& what) {
    if (result != 0) throw std::system_error{errno, std::generic_category(), what};
}

struct stat statusOf(const std::string& path) {
    struct stat status {};
    must(::lstat(path.c_str(), &status), path);
    return status;
}

struct stat statusOf(int file) {
    struct stat status {};
    must(::fstat(file, &status), "fstat");
    return status;
}

}  // namespace

CrashingDisk::Node::Node(const struct stat& status)
    : kind(status.st_mode & S_IFMT),
      permissions(status.st_mode & permissionBits),
      owner({status.st_uid, status.st_gid}) {}

void CrashingDisk::Node::write(std::size_t offset, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t block = offset / blockSize;
        const std::size_t at = offset % blockSize;
        const std::string_view piece = bytes.substr(0, blockSize - at);
        if (block >= blocks.size()) blocks.resize(block + 1, Part<std::string>(std::string(blockSize, '\0')));
        std::string content = blocks[block].now();
        blocks[block].set(content.replace(at, piece.size(), piece));
        offset += piece.size();
        length.set(std::max(length.now(), offset));
        bytes.remove_prefix(piece.size());
    }
}

void CrashingDisk::Node::name(const std::string& name, NodePointer node) {
    names.try_emplace(name, nullptr).first->second.set(std::move(node));
}

void CrashingDisk::Node::flush() {
    permissions.flush();
    owner.flush();
    length.flush();
    for (auto& block : blocks)
        block.flush();
    for (auto& [name, part] : names)
        part.flush();
}

std::vector<CrashingDisk::AnyPart*> CrashingDisk::Node::parts() {
    std::vector<AnyPart*> all{&permissions, &owner, &length};
    for (auto& block : blocks)
        all.push_back(&block);
    for (auto& [name, part] : names)
        all.push_back(&part);
    return all;
}

std::string CrashingDisk::Node::contentLeft() const {
    if (kind == S_IFLNK) return target;
    std::string content;
    for (const auto& block : blocks)
        content += block.leftValue();
    content.resize(length.leftValue());
    return content;
}

CrashingDisk::CrashingDisk(const std::string& folder) : _root(scan(folder)) {
    for (const auto& node : _all)
        node->flush();
}

CrashingDisk::NodePointer CrashingDisk::add(const struct stat& status) {
    _all.push_back(std::make_shared<Node>(status));
    // The number of a file that is no more may have been given to another.
    return _byInode[{status.st_dev, status.st_ino}] = _all.back();
}

CrashingDisk::NodePointer CrashingDisk::scan(const std::string& path) {
    const NodePointer node = add(statusOf(path));
    if (node->kind == S_IFLNK) node->target = fs::read_symlink(path);
    if (node->kind == S_IFREG) node->write(0, kit::readText(path));
    if (node->kind == S_IFDIR) {
        for (const auto& entry : fs::directory_iterator{path})
            node->name(entry.path().filename(), scan(entry.path()));
    }
    return node;
}

CrashingDisk::NodePointer CrashingDisk::nodeOf(int file) const {
    const struct stat status = statusOf(file);
    return _byInode.at({status.st_dev, status.st_ino});
}

void CrashingDisk::madeFile(int folder, const std::string& name, int file) {
    nodeOf(folder)->name(name, add(statusOf(file)));
}

void CrashingDisk::madeFolder(int folder, const std::string& name) {
    struct stat status {};
    must(::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW), name);
    nodeOf(folder)->name(name, add(status));
}

void CrashingDisk::wrote(int file, std::size_t offset, std::string_view bytes) {
    nodeOf(file)->write(offset, bytes);
}

void CrashingDisk::changedAttributes(int file) {
    const struct stat status = statusOf(file);
    const NodePointer node = nodeOf(file);
    node->permissions.set(status.st_mode & permissionBits);
    node->owner.set({status.st_uid, status.st_gid});
}

void CrashingDisk::renamed(int folder, const std::string& from, const std::string& to) {
    const NodePointer node = nodeOf(folder);
    node->name(to, node->names.at(from).now());
    node->name(from, nullptr);
}

void CrashingDisk::unlinked(int folder, const std::string& name) {
    nodeOf(folder)->name(name, nullptr);
}

void CrashingDisk::flushed(int file) {
    nodeOf(file)->flush();
}

// Counts up, as with a number of which each part is a digit.
void CrashingDisk::forEachState(const std::function<void()>& visit) {
    std::vector<AnyPart*> digits;
    for (const auto& node : _all) {
        std::ranges::copy_if(node->parts(), std::back_inserter(digits),
                             [](const AnyPart* part) { return part->values() > 1; });
    }
    std::size_t carried = 0;
    do {
        visit();
        for (carried = 0; carried < digits.size(); ++carried) {
            AnyPart& digit = *digits[carried];
            digit.left = (digit.left + 1) % digit.values();
            if (digit.left != 0) break;
        }
    } while (carried < digits.size());
}

std::vector<CrashingDisk::Entry> CrashingDisk::state() const {
    std::vector<Entry> entries;
    std::map<const Node*, std::string> paths;
    addEntries(*_root, "", paths, entries);
    return entries;
}

void CrashingDisk::addEntries(const Node& folder, const std::string& path, std::map<const Node*, std::string>& paths,
                              std::vector<Entry>& entries) const {
    for (const auto& [name, part] : folder.names) {
        const Node* node = part.leftValue().get();
        if (node == nullptr) continue;
        const std::string entry = path + "/" + name;
        const auto [known, isNew] = paths.try_emplace(node, entry);
        entries.push_back({entry, node->kind | node->permissions.leftValue(), node->owner.leftValue(),
                           node->contentLeft(), isNew ? "" : known->second});
        addEntries(*node, entry, paths, entries);
    }
}

void rebuild(const std::vector<CrashingDisk::Entry>& state, const std::string& folder) {
    for (const auto& entry : state) {
        const std::string path = folder + entry.path;
        if (!entry.otherPath.empty()) {
            fs::create_hard_link(folder + entry.otherPath, path);
            continue;
        }
        if (S_ISDIR(entry.mode)) fs::create_directory(path);
        if (S_ISREG(entry.mode)) kit::writeText(path, entry.content);
        if (S_ISLNK(entry.mode)) fs::create_symlink(entry.content, path);
        must(::lchown(path.c_str(), entry.owner.first, entry.owner.second), path);
        if (!S_ISLNK(entry.mode)) must(::chmod(path.c_str(), entry.mode & permissionBits), path);
    }
}

}  // namespace reliability_test
