// SPDX-License-Identifier: MIT
#include "hosts/phones/far/sftp_packet.h"

#include <sys/stat.h>

#include <algorithm>

namespace hosts::sftp {
namespace {

using platform::Problem;
using platform::Result;

enum AttributeFlags : std::uint32_t { hasSize = 1, hasOwner = 2, hasPermissions = 4, hasTimes = 8 };
constexpr std::uint32_t hasMore = 0x80000000;
constexpr std::uint32_t version3 = 3;
// A greeting is short: the version and the names of extensions.
constexpr std::uint32_t longestGreeting = 4096;
constexpr std::uint32_t shortestGreeting = 5;

std::string bigEndian(std::uint64_t value, int bytes) {
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text += static_cast<char>(value >> shift & 0xFF);
    return text;
}

std::uint64_t fromBigEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes)
        value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

/// Takes fields from the front of a packet, and remembers whether one was not there.
class Fields {
public:
    explicit Fields(std::string_view bytes) : _left(bytes) {}

    std::uint32_t number() { return static_cast<std::uint32_t>(fromBigEndian(take(4))); }
    std::uint64_t wideNumber() { return fromBigEndian(take(8)); }
    std::string_view text() { return take(number()); }
    std::uint8_t byte() { return static_cast<std::uint8_t>(fromBigEndian(take(1))); }
    Attributes attributes();

    bool areWhole() const { return _areWhole; }
    bool areAtEnd() const { return _left.empty(); }
    std::size_t left() const { return _left.size(); }

private:
    std::string_view take(std::size_t count) {
        if (count > _left.size()) {
            _areWhole = false;
            _left = {};
            return {};
        }
        const std::string_view taken = _left.substr(0, count);
        _left.remove_prefix(count);
        return taken;
    }

    std::string_view _left;
    bool _areWhole = true;
};

Attributes Fields::attributes() {
    Attributes attributes;
    const std::uint32_t flags = number();
    if (flags & hasSize) attributes.size = wideNumber();
    if (flags & hasOwner) {
        const std::uint32_t user = number();
        attributes.owner = {user, number()};
    }
    if (flags & hasPermissions) attributes.permissions = number();
    if (flags & hasTimes) {
        const std::uint32_t accessed = number();
        attributes.times = {accessed, number()};
    }
    if (flags & hasMore) {
        for (std::uint32_t more = number(); more > 0 && areWhole(); --more) {
            text();
            text();
        }
    }
    return attributes;
}

void readNames(Fields& fields, Reply& reply) {
    for (std::uint32_t count = fields.number(); count > 0 && fields.areWhole(); --count) {
        reply.names.emplace_back(fields.text());
        fields.text();
        fields.attributes();
    }
}

bool isKind(const Attributes& attributes, mode_t kind) {
    return attributes.permissions && (*attributes.permissions & S_IFMT) == kind;
}

// Whether a greeting may begin here: its length, that it is one, and version 3 or later, which is answered with 3.
bool beginsGreeting(std::string_view bytes) {
    Fields fields(bytes.substr(0, 9));
    const std::uint32_t length = fields.number();
    const auto type = static_cast<Type>(fields.byte());
    const std::uint32_t version = fields.number();
    return fields.areWhole() && length >= shortestGreeting && length <= longestGreeting && type == Type::version &&
           version >= version3 && version < 16;
}

std::optional<Greeting> readGreeting(std::string_view packet) {
    Fields fields(packet);
    fields.byte();
    Greeting greeting{fields.number(), {}};
    while (fields.areWhole() && !fields.areAtEnd()) {
        const std::string_view name = fields.text();
        greeting.extensions.emplace_back(name, fields.text());
    }
    return fields.areWhole() ? std::optional(std::move(greeting)) : std::nullopt;
}

}  // namespace

bool Attributes::isRegular() const {
    return isKind(*this, S_IFREG);
}
bool Attributes::isFolder() const {
    return isKind(*this, S_IFDIR);
}
bool Attributes::isLink() const {
    return isKind(*this, S_IFLNK);
}

Request&& Request::number(std::uint32_t value) && {
    _fields += bigEndian(value, 4);
    return std::move(*this);
}

Request&& Request::wideNumber(std::uint64_t value) && {
    _fields += bigEndian(value, 8);
    return std::move(*this);
}

Request&& Request::text(std::string_view value) && {
    _fields += bigEndian(value.size(), 4);
    _fields += value;
    return std::move(*this);
}

Request&& Request::attributes(const Attributes& value) && {
    const std::uint32_t flags = (value.size ? hasSize : 0U) | (value.owner ? hasOwner : 0U) |
                                (value.permissions ? hasPermissions : 0U) | (value.times ? hasTimes : 0U);
    _fields += bigEndian(flags, 4);
    if (value.size) _fields += bigEndian(*value.size, 8);
    if (value.owner) _fields += bigEndian(value.owner->first, 4) + bigEndian(value.owner->second, 4);
    if (value.permissions) _fields += bigEndian(*value.permissions, 4);
    if (value.times) _fields += bigEndian(value.times->first, 4) + bigEndian(value.times->second, 4);
    return std::move(*this);
}

std::string Request::bytes(std::uint32_t id) const {
    constexpr std::size_t typeAndNumber = 5;
    return bigEndian(_fields.size() + typeAndNumber, 4) + static_cast<char>(_type) + bigEndian(id, 4) + _fields;
}

Request openFile(std::string_view path, std::uint32_t flags, const Attributes& attributes) {
    return Request(Type::open).text(path).number(flags).attributes(attributes);
}
Request closeHandle(std::string_view handle) {
    return Request(Type::close).text(handle);
}
Request readHandle(std::string_view handle, std::uint64_t offset, std::uint32_t count) {
    return Request(Type::read).text(handle).wideNumber(offset).number(count);
}
Request writeHandle(std::string_view handle, std::uint64_t offset, std::string_view bytes) {
    return Request(Type::write).text(handle).wideNumber(offset).text(bytes);
}
Request statHandle(std::string_view handle) {
    return Request(Type::fstat).text(handle);
}
Request setHandle(std::string_view handle, const Attributes& attributes) {
    return Request(Type::fsetstat).text(handle).attributes(attributes);
}
Request onPath(Type type, std::string_view path) {
    return Request(type).text(path);
}
Request makeFolder(std::string_view path, std::uint32_t permissions) {
    return Request(Type::mkdir).text(path).attributes({.permissions = permissions});
}
Request renamePath(std::string_view from, std::string_view to) {
    return Request(Type::rename).text(from).text(to);
}
Request extendedOn(std::string_view extension, std::string_view text) {
    return Request(Type::extended).text(extension).text(text);
}
Request extendedOn(std::string_view extension, std::string_view from, std::string_view to) {
    return Request(Type::extended).text(extension).text(from).text(to);
}

std::optional<Reply> readReply(std::string_view packet) {
    Fields fields(packet);
    Reply reply;
    reply.type = static_cast<Type>(fields.byte());
    reply.id = fields.number();
    switch (reply.type) {
        case Type::status:
            reply.status = fields.number();
            // Old servers say no more.
            if (fields.areWhole() && !fields.areAtEnd()) reply.text = fields.text();
            break;
        case Type::handle:
        case Type::data:
            reply.text = fields.text();
            break;
        case Type::name:
            readNames(fields, reply);
            break;
        case Type::attrs:
            reply.attributes = fields.attributes();
            break;
        case Type::extendedReply:
            reply.text = packet.substr(packet.size() - fields.left());
            break;
        default:
            return std::nullopt;
    }
    return fields.areWhole() ? std::optional(std::move(reply)) : std::nullopt;
}

std::vector<std::uint64_t> wideNumbersIn(const Reply& reply, std::size_t least) {
    std::vector<std::uint64_t> numbers;
    if (reply.type != Type::extendedReply) return numbers;
    std::string_view left = reply.text;
    for (; left.size() >= sizeof(std::uint64_t); left.remove_prefix(sizeof(std::uint64_t)))
        numbers.push_back(fromBigEndian(left.substr(0, sizeof(std::uint64_t))));
    return numbers.size() < least ? std::vector<std::uint64_t>() : numbers;
}

Result<std::optional<Greeting>> PacketStream::takeGreeting() {
    std::size_t start = 0;
    while (start + 9 <= _bytes.size() && !beginsGreeting(std::string_view(_bytes).substr(start)))
        ++start;
    _foreword.append(_bytes, 0, start);
    _bytes.erase(0, start);
    if (_foreword.size() > longestForeword)
        return Problem{.reason = "what answers there is no SFTP server: it says something else"};
    if (_bytes.size() < 9) return std::optional<Greeting>();
    auto packet = takePacket();
    if (!packet) return std::move(packet).error();
    if (!*packet) return std::optional<Greeting>();
    auto greeting = readGreeting(**packet);
    if (!greeting) return Problem{.reason = "the SFTP server's greeting is none"};
    return greeting;
}

Result<std::optional<std::string>> PacketStream::takePacket() {
    if (_bytes.size() < 4) return std::optional<std::string>();
    const auto length = static_cast<std::size_t>(fromBigEndian(std::string_view(_bytes).substr(0, 4)));
    if (length == 0 || length > longestPacket)
        return Problem{.reason = "the SFTP server sends an answer of " + std::to_string(length) + " bytes"};
    if (_bytes.size() - 4 < length) return std::optional<std::string>();
    std::string packet = _bytes.substr(4, length);
    _bytes.erase(0, 4 + length);
    return std::optional(std::move(packet));
}

}  // namespace hosts::sftp
