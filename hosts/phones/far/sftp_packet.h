// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/foundation/result.h"

/// The packets of the SSH File Transfer Protocol, version 3 (draft-ietf-secsh-filexfer-02), as bytes.
namespace hosts::sftp {

enum class Type : std::uint8_t {
    init = 1,
    version = 2,
    open = 3,
    close = 4,
    read = 5,
    write = 6,
    lstat = 7,
    fstat = 8,
    setstat = 9,
    fsetstat = 10,
    opendir = 11,
    readdir = 12,
    remove = 13,
    mkdir = 14,
    realpath = 16,
    stat = 17,
    rename = 18,
    status = 101,
    handle = 102,
    data = 103,
    name = 104,
    attrs = 105,
    extended = 200,
    extendedReply = 201,
};

enum Status : std::uint32_t {
    ok = 0,
    endOfFile = 1,
    noSuchFile = 2,
    permissionDenied = 3,
    failure = 4,
    unsupported = 8
};

enum OpenFlags : std::uint32_t { openRead = 1, openWrite = 2, openCreate = 8, openAnew = 32 };

struct Attributes {
    std::optional<std::uint64_t> size = {};
    std::optional<std::pair<std::uint32_t, std::uint32_t>> owner = {};  ///< user and group
    std::optional<std::uint32_t> permissions = {};                      ///< as in st_mode, the kind of file included
    std::optional<std::pair<std::uint32_t, std::uint32_t>> times =
        {};  ///< accessed and modified, in seconds since 1970

    bool isRegular() const;
    bool isFolder() const;
    bool isLink() const;
};

/// A request under way to its bytes: what it is, and its fields in their order. The session adds the number.
class Request {
public:
    explicit Request(Type type) : _type(type) {}
    Request&& number(std::uint32_t value) &&;
    Request&& wideNumber(std::uint64_t value) &&;
    Request&& text(std::string_view value) &&;
    Request&& attributes(const Attributes& value) &&;

    /// The whole packet, its length first.
    std::string bytes(std::uint32_t id) const;

private:
    Type _type;
    std::string _fields;
};

Request openFile(std::string_view path, std::uint32_t flags, const Attributes& attributes = {});
Request closeHandle(std::string_view handle);
Request readHandle(std::string_view handle, std::uint64_t offset, std::uint32_t count);
Request writeHandle(std::string_view handle, std::uint64_t offset, std::string_view bytes);
Request statHandle(std::string_view handle);
Request setHandle(std::string_view handle, const Attributes& attributes);
/// For the types that take a path alone.
Request onPath(Type type, std::string_view path);
Request makeFolder(std::string_view path, std::uint32_t permissions);
Request renamePath(std::string_view from, std::string_view to);
Request extendedOn(std::string_view extension, std::string_view text);
Request extendedOn(std::string_view extension, std::string_view from, std::string_view to);

/// What a server has answered. Of the further members those are set that the type has.
struct Reply {
    Type type = Type::status;
    std::uint32_t id = 0;
    std::uint32_t status = ok;
    std::string text;  ///< a status's message, a handle, data
    std::vector<std::string> names;
    Attributes attributes;

    bool isOk() const { return type == Type::status && status == ok; }
};

/// Nothing for bytes that are no answer of the protocol. `packet` is without its length.
std::optional<Reply> readReply(std::string_view packet);

/// Extensions of OpenSSH's server that are used where they are offered.
constexpr std::string_view posixRename = "posix-rename@openssh.com";
constexpr std::string_view fsync = "fsync@openssh.com";
constexpr std::string_view statvfs = "statvfs@openssh.com";
constexpr std::string_view limits = "limits@openssh.com";

/// The numbers of 64 bits that an extension has answered with, one behind the other. Empty for another answer, or one
/// of fewer than `least`.
std::vector<std::uint64_t> wideNumbersIn(const Reply& reply, std::size_t least);

/// What a server says of itself first.
struct Greeting {
    std::uint32_t version = 0;
    std::vector<std::pair<std::string, std::string>> extensions;
};

/// Cuts what a server sends into packets. Whatever the bytes are, no more of them is held than one packet and what came
/// with it.
class PacketStream {
public:
    /// The most bytes that a packet may have, and those that a shell may say before the protocol begins.
    static constexpr std::size_t longestPacket = (std::size_t{256} << 10) + 1024;
    static constexpr std::size_t longestForeword = std::size_t{64} << 10;

    void append(std::string_view bytes) { _bytes.append(bytes); }

    /// The server's greeting, with what stood before it passed over; nothing while it is not all there. A problem where
    /// it is none.
    platform::Result<std::optional<Greeting>> takeGreeting();
    /// The next packet, without its length; nothing while it is not all there. A problem where it is none.
    platform::Result<std::optional<std::string>> takePacket();

    /// What has been said before the protocol began, or in its place.
    std::string foreword() const { return _foreword + _bytes; }

private:
    std::string _bytes;
    std::string _foreword;
};

}  // namespace hosts::sftp
