// SPDX-License-Identifier: MIT
#include <cstddef>
#include <string>
#include <string_view>

#include "hosts/hand_over/mail/gmime_objects.h"
#include "hosts/hand_over/message_reader.h"

namespace hosts {

namespace {

using platform::Done;
using platform::Problem;
using platform::Result;

/// A message or a part of one, as RFC 5322 and MIME divide it.
struct Entity {
    std::string_view header;  ///< with the empty line at its end
    std::string_view body;
};

// With its end.
std::string_view takeLine(std::string_view& bytes) {
    const std::size_t end = bytes.find('\n');
    const std::string_view line = bytes.substr(0, end == std::string_view::npos ? end : end + 1);
    bytes.remove_prefix(line.size());
    return line;
}

std::string_view withoutEnd(std::string_view line) {
    if (line.ends_with('\n')) line.remove_suffix(1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

// A message that was kept in a mailbox file has a line of that file's own ahead of it.
Entity entityIn(std::string_view bytes) {
    if (bytes.starts_with("From ")) takeLine(bytes);
    std::string_view body = bytes;
    while (!body.empty() && !withoutEnd(takeLine(body)).empty()) {
    }
    return {bytes.substr(0, bytes.size() - body.size()), body};
}

enum class Delimiter { none, next, last };

Delimiter delimiterIn(std::string_view line, std::string_view boundary) {
    if (!line.starts_with("--") || !line.substr(2).starts_with(boundary)) return Delimiter::none;
    std::string_view rest = line.substr(2 + boundary.size());
    const bool isLast = rest.starts_with("--");
    if (isLast) rest.remove_prefix(2);
    if (rest.find_first_not_of(" \t\r\n") != std::string_view::npos) return Delimiter::none;
    return isLast ? Delimiter::last : Delimiter::next;
}

// Goes through the parts that have none themselves. The library's own parser builds the whole message, however many
// parts and fields it makes of it: a hostile one takes a hundred times its size. Here, one header at a time is parsed,
// and one part at a time decoded.
class PartWalk {
public:
    explicit PartWalk(const std::function<bool(std::string_view)>& take) : _take(take) {}

    Result<Done> visit(std::string_view bytes, std::size_t depth = 0) {
        if (depth > mostDepth) return Problem{.reason = "its parts nest too deep"};
        if (++_parts > mostParts) return Problem{.reason = "it has too many parts"};
        const Entity entity = entityIn(bytes);
        if (entity.header.size() > mostHeaderBytes) return Problem{.reason = "its header is too long"};
        const LentBytes lent(entity.header);
        const UniqueObject<GMimeParser> parser{g_mime_parser_new_with_stream(lent.stream().get())};
        const UniqueObject<GMimeObject> parsed{g_mime_parser_construct_part(parser.get(), nullptr)};
        GMimeContentType* const type = parsed ? g_mime_object_get_content_type(parsed.get()) : nullptr;
        if (type && g_mime_content_type_is_type(type, "message", "*")) return visit(entity.body, depth + 1);
        if (type && g_mime_content_type_is_type(type, "multipart", "*")) {
            const char* const boundary = g_mime_content_type_get_parameter(type, "boundary");
            return boundary ? visitParts(entity.body, boundary, depth + 1) : Done();
        }
        const char* const encoding =
            parsed ? g_mime_object_get_header(parsed.get(), "Content-Transfer-Encoding") : nullptr;
        takeContent(entity.body, g_mime_content_encoding_from_string(encoding ? encoding : ""));
        return Done();
    }

private:
    static constexpr std::size_t mostDepth = 16;
    static constexpr std::size_t mostParts = 1000;
    static constexpr std::size_t mostHeaderBytes = std::size_t{1} << 20;

    // A message that is cut ends its parts.
    Result<Done> visitParts(std::string_view body, std::string_view boundary, std::size_t depth) {
        Result<Done> visited = Done();
        Delimiter seen = Delimiter::none;
        std::size_t length = 0;
        std::string_view rest = body;
        while (seen != Delimiter::last && visited && !_isOver) {
            const std::string_view line = takeLine(rest);
            const Delimiter delimiter = line.empty() ? Delimiter::last : delimiterIn(line, boundary);
            if (delimiter == Delimiter::none) {
                length += line.size();
                continue;
            }
            // The end of the line ahead of it belongs to the delimiter.
            if (seen == Delimiter::next) visited = visit(withoutEnd(body.substr(0, length)), depth);
            body = rest;
            length = 0;
            seen = delimiter;
        }
        return visited;
    }

    void takeContent(std::string_view body, GMimeContentEncoding encoding) {
        const LentBytes lent(body);
        const UniqueObject<GMimeDataWrapper> content{
            g_mime_data_wrapper_new_with_stream(lent.stream().get(), encoding)};
        const UniqueObject<GMimeStream> decoded{g_mime_stream_mem_new()};
        g_mime_data_wrapper_write_to_stream(content.get(), decoded.get());
        const GByteArray* const bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(decoded.get()));
        _isOver = _take({reinterpret_cast<const char*>(bytes->data), bytes->len});
    }

    const std::function<bool(std::string_view)>& _take;
    std::size_t _parts = 0;
    bool _isOver = false;
};

}  // namespace

}  // namespace hosts

extern "C" __attribute__((visibility("default"))) void trivel3ReadMailMessage(
    std::string_view message, const std::function<bool(std::string_view)>& take,
    platform::Result<platform::Done>& outcome) {
    g_mime_init();
    outcome = hosts::PartWalk(take).visit(message);
}
