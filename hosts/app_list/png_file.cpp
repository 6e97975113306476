// SPDX-License-Identifier: MIT
#include "hosts/app_list/png_file.h"

#include <zlib.h>

#include <cstddef>

#include "hosts/app_list/png_data.h"

namespace hosts {
namespace {

constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
constexpr std::size_t lengthSize = 4;
constexpr std::size_t typeSize = 4;
constexpr std::size_t checkSumSize = 4;
constexpr std::size_t headerContentSize = 13;
constexpr std::uint32_t longestContent = 0x7FFFFFFF;

std::uint32_t numberAt(std::string_view bytes, std::size_t position) {
    std::uint32_t number = 0;
    for (std::size_t byte = 0; byte < 4; ++byte) {
        number = number << 8 | static_cast<std::uint8_t>(bytes[position + byte]);
    }
    return number;
}

void appendNumber(std::string& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift & 0xFF);
    }
}

std::uint32_t checkSum(std::string_view bytes) {
    const auto sum = ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
    return static_cast<std::uint32_t>(sum);
}

void appendChunk(std::string& file, std::string_view type, std::string_view content) {
    appendNumber(file, static_cast<std::uint32_t>(content.size()));
    const std::size_t start = file.size();
    file.append(type).append(content);
    appendNumber(file, checkSum(std::string_view(file).substr(start)));
}

struct Chunk {
    std::string_view whole;

    std::string_view type() const { return whole.substr(lengthSize, typeSize); }
    std::string_view content() const {
        return whole.substr(lengthSize + typeSize, whole.size() - lengthSize - typeSize - checkSumSize);
    }
    bool isIntact() const {
        const std::size_t end = whole.size() - checkSumSize;
        return checkSum(whole.substr(lengthSize, end - lengthSize)) == numberAt(whole, end);
    }
};

class ChunkReader {
public:
    explicit ChunkReader(std::string_view file) {
        if (file.starts_with(signature)) _rest = file.substr(signature.size());
    }

    /// Nothing at the end, or when the next chunk is cut short.
    std::optional<Chunk> next() {
        constexpr std::size_t frame = lengthSize + typeSize + checkSumSize;
        if (_rest.size() < frame) return std::nullopt;
        const std::uint32_t length = numberAt(_rest, 0);
        if (length > longestContent || length > _rest.size() - frame) return std::nullopt;
        const Chunk chunk{_rest.substr(0, frame + length)};
        _rest.remove_prefix(chunk.whole.size());
        return chunk;
    }

private:
    std::string_view _rest;
};

bool isInRange(std::uint32_t side) {
    return side >= 1 && side <= longestPngSide;
}

std::optional<PngHeader> headerFrom(std::string_view content) {
    if (content.size() != headerContentSize) return std::nullopt;
    PngHeader header;
    header.width = numberAt(content, 0);
    header.height = numberAt(content, 4);
    if (!isInRange(header.width) || !isInRange(header.height)) return std::nullopt;
    header.bitDepth = static_cast<std::uint8_t>(content[8]);
    header.colourType = static_cast<std::uint8_t>(content[9]);
    header.interlaced = content[12] != 0;
    return header;
}

struct HeaderChunk {
    PngHeader header;
    Chunk chunk;
};

// The header is the first chunk, or the second after the optimised form's mark.
std::optional<HeaderChunk> readHeaderChunk(ChunkReader& chunks) {
    std::optional<Chunk> chunk = chunks.next();
    const bool optimised = chunk && chunk->type() == "CgBI";
    if (optimised) chunk = chunks.next();
    if (!chunk || chunk->type() != "IHDR") return std::nullopt;
    std::optional<PngHeader> header = headerFrom(chunk->content());
    if (!header) return std::nullopt;
    header->optimised = optimised;
    return HeaderChunk{*header, *chunk};
}

std::string joinedContents(const std::vector<std::string_view>& chunks) {
    std::string contents;
    for (const std::string_view chunk : chunks) {
        contents.append(Chunk{chunk}.content());
    }
    return contents;
}

}  // namespace

std::optional<PngHeader> readPngHeader(std::string_view file) {
    ChunkReader chunks(file);
    const std::optional<HeaderChunk> found = readHeaderChunk(chunks);
    return found ? std::optional(found->header) : std::nullopt;
}

std::optional<PngFile> PngFile::split(std::string_view file) {
    ChunkReader chunks(file);
    const std::optional<HeaderChunk> head = readHeaderChunk(chunks);
    if (!head || !head->chunk.isIntact()) return std::nullopt;
    PngFile parts;
    parts._header = head->header;
    parts._headChunks.push_back(head->chunk.whole);
    while (const std::optional<Chunk> chunk = chunks.next()) {
        const std::string_view type = chunk->type();
        if (type == "IEND") return parts;
        const bool isData = type == "IDAT";
        if (!isData && type != "PLTE" && type != "tRNS") continue;
        if (!chunk->isIntact()) return std::nullopt;
        (isData ? parts._dataChunks : parts._headChunks).push_back(chunk->whole);
    }
    return std::nullopt;
}

std::optional<std::string> PngFile::standardForm() const {
    std::string file(signature);
    for (const std::string_view chunk : _headChunks) {
        file.append(chunk);
    }
    if (_header.optimised) {
        const auto data = wrapRawData(joinedContents(_dataChunks), unpackedSize(_header));
        if (!data) return std::nullopt;
        appendChunk(file, "IDAT", *data);
    } else {
        for (const std::string_view chunk : _dataChunks) {
            file.append(chunk);
        }
    }
    appendChunk(file, "IEND", {});
    return file;
}

}  // namespace hosts
