// SPDX-License-Identifier: MIT
#include "hosts/app_list/png_picture.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <string>
#include <vector>

namespace hosts {
namespace {

constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
constexpr std::size_t numberSize = 4;
constexpr std::size_t typeSize = 4;
constexpr std::size_t frameSize = numberSize + typeSize + numberSize;  // the length, the type and the check sum

const Bytef* bytesOf(std::string_view text) {
    return reinterpret_cast<const Bytef*>(text.data());
}

std::uint32_t numberAt(std::string_view bytes, std::size_t position) {
    return png_get_uint_32(bytesOf(bytes.substr(position, numberSize)));
}

std::string encoded(std::uint32_t number) {
    png_byte bytes[numberSize];
    ::png_save_uint_32(bytes, number);
    return std::string(std::begin(bytes), std::end(bytes));
}

std::uint32_t checkSum(std::string_view bytes) {
    return static_cast<std::uint32_t>(::crc32_z(0, bytesOf(bytes), bytes.size()));
}

struct Chunk {
    std::string_view whole;

    std::string_view type() const { return whole.substr(numberSize, typeSize); }
    std::string_view content() const { return whole.substr(numberSize + typeSize, whole.size() - frameSize); }
    bool isIntact() const {
        const std::size_t end = whole.size() - numberSize;
        return checkSum(whole.substr(numberSize, end - numberSize)) == numberAt(whole, end);
    }
};

void appendChunk(std::string& file, std::string_view type, std::string_view content) {
    file.append(encoded(static_cast<std::uint32_t>(content.size())));
    const std::size_t start = file.size();
    file.append(type).append(content);
    file.append(encoded(checkSum(std::string_view(file).substr(start))));
}

// Takes a chunk off the front. Nothing at the end, or when the chunk is cut short.
std::optional<Chunk> takeChunk(std::string_view& rest) {
    if (rest.size() < frameSize || numberAt(rest, 0) > rest.size() - frameSize) return std::nullopt;
    const Chunk chunk{rest.substr(0, frameSize + numberAt(rest, 0))};
    rest.remove_prefix(chunk.whole.size());
    return chunk;
}

bool isInRange(std::uint32_t side) {
    return side >= 1 && side <= longestPngSide;
}

struct Head {
    PngHeader header;
    Chunk chunk;
    std::string_view rest;  ///< of the file
};

// The header is the first chunk, or the second after the optimised form's mark.
std::optional<Head> readHead(std::string_view file) {
    if (!file.starts_with(signature)) return std::nullopt;
    file.remove_prefix(signature.size());
    std::optional<Chunk> chunk = takeChunk(file);
    PngHeader header;
    header.optimised = chunk && chunk->type() == "CgBI";
    if (header.optimised) chunk = takeChunk(file);
    constexpr std::size_t contentSize = 13;
    if (!chunk || chunk->type() != "IHDR" || chunk->content().size() != contentSize) return std::nullopt;
    const std::string_view content = chunk->content();
    header.width = numberAt(content, 0);
    header.height = numberAt(content, 4);
    header.bitDepth = static_cast<std::uint8_t>(content[8]);
    header.colourType = static_cast<std::uint8_t>(content[9]);
    header.interlaced = content[12] != 0;
    if (!isInRange(header.width) || !isInRange(header.height)) return std::nullopt;
    return Head{header, *chunk, file};
}

std::size_t rowsSize(const PngHeader& header, std::size_t width, std::size_t height) {
    constexpr std::size_t channels[] = {1, 4, 3, 1, 2, 4, 4};  // of each colour type; most where there is none
    constexpr std::size_t mostBits = 16;
    const std::size_t bits = width * channels[std::min<std::size_t>(header.colourType, 6)] *
                             std::min<std::size_t>(header.bitDepth, mostBits);
    return width == 0 ? 0 : height * (1 + (bits + 7) / 8);
}

// The length in bytes of a picture's rows, each with its filter byte, when they are unpacked. Too
// much, if anything, for a colour type or a bit depth that there is not.
std::size_t unpackedSize(const PngHeader& header) {
    if (!header.interlaced) return rowsSize(header, header.width, header.height);
    std::size_t size = 0;
    for (unsigned pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass) {
        size += rowsSize(header, PNG_PASS_COLS(header.width, pass), PNG_PASS_ROWS(header.height, pass));
    }
    return size;
}

// Gives compressed data the zlib wrapper that it lacks. Nothing when it is damaged, or unpacks to
// more than `mostUnpacked` bytes.
std::optional<std::string> wrapRawData(std::string_view raw, std::size_t mostUnpacked) {
    constexpr int windowWithoutWrapper = -15;
    std::string unpacked(mostUnpacked, '\0');
    z_stream stream{};
    stream.next_in = bytesOf(raw);
    stream.avail_in = static_cast<uInt>(raw.size());
    stream.next_out = reinterpret_cast<Bytef*>(unpacked.data());
    stream.avail_out = static_cast<uInt>(unpacked.size());
    if (::inflateInit2(&stream, windowWithoutWrapper) != Z_OK) return std::nullopt;
    const int status = ::inflate(&stream, Z_FINISH);
    ::inflateEnd(&stream);
    if (status != Z_STREAM_END) return std::nullopt;
    const auto sum = ::adler32_z(::adler32(0, nullptr, 0), bytesOf(unpacked), stream.total_out);
    // Compressed with deflate and a window of 32 KiB, the widest.
    return std::string("\x78\x01").append(raw).append(encoded(static_cast<std::uint32_t>(sum)));
}

// A file of those parts alone that make up the picture: everything else, texts and colour profiles
// that unfold to any size, is left behind. Any decoder reads it, though the pixels of an optimised
// file are still blue first and premultiplied. Nothing when one of those parts is damaged or missing.
std::optional<std::string> standardForm(const Head& head) {
    if (!head.chunk.isIntact()) return std::nullopt;
    std::string file = std::string(signature).append(head.chunk.whole);
    std::string data;
    std::string_view rest = head.rest;
    std::optional<Chunk> chunk = takeChunk(rest);
    for (; chunk && chunk->type() != "IEND"; chunk = takeChunk(rest)) {
        const bool isData = chunk->type() == "IDAT";
        if (!isData && chunk->type() != "PLTE" && chunk->type() != "tRNS") continue;
        if (!chunk->isIntact()) return std::nullopt;
        (isData ? data : file).append(isData && head.header.optimised ? chunk->content() : chunk->whole);
    }
    if (!chunk) return std::nullopt;
    if (head.header.optimised) {
        const auto wrapped = wrapRawData(data, unpackedSize(head.header));
        if (!wrapped) return std::nullopt;
        appendChunk(file, "IDAT", *wrapped);
    } else {
        file.append(data);
    }
    appendChunk(file, "IEND", {});
    return file;
}

// What libpng needs to read a file from memory: its simplified reading (png_image_*) fails on
// interlaced pictures of 16 bits.
class PngReader {
public:
    explicit PngReader(std::string_view file) : _rest(file) {
        _png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignore);
        _info = _png ? png_create_info_struct(_png) : nullptr;
    }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() { png_destroy_read_struct(&_png, &_info, nullptr); }

    /// Reads all pixels, of whatever kind, as four bytes each to where the rows point, each of
    /// `rowBytes`. False when they are not whole.
    bool readRows(std::vector<png_bytep>& rows, std::size_t rowBytes, bool isBlueFirst);

private:
    [[noreturn]] static void leave(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void ignore(png_structp, png_const_charp) {}
    static void read(png_structp png, png_bytep bytes, std::size_t length) {
        std::string_view& rest = static_cast<PngReader*>(png_get_io_ptr(png))->_rest;
        if (length > rest.size()) leave(png, nullptr);
        rest.copy(reinterpret_cast<char*>(bytes), length);
        rest.remove_prefix(length);
    }

    std::string_view _rest;
    png_structp _png = nullptr;
    png_infop _info = nullptr;
};

// libpng leaves its functions by a jump to here when it meets an error; so there must be nothing to
// destroy in this one.
bool PngReader::readRows(std::vector<png_bytep>& rows, std::size_t rowBytes, bool isBlueFirst) {
    if (!_info || setjmp(png_jmpbuf(_png))) return false;
    png_set_read_fn(_png, this, read);
    png_read_info(_png, _info);
    png_set_expand(_png);
    png_set_scale_16(_png);
    png_set_gray_to_rgb(_png);
    png_set_add_alpha(_png, 0xFF, PNG_FILLER_AFTER);
    if (isBlueFirst) png_set_bgr(_png);
    png_set_interlace_handling(_png);
    png_read_update_info(_png, _info);
    if (png_get_rowbytes(_png, _info) != rowBytes) return false;
    png_read_image(_png, rows.data());
    png_read_end(_png, nullptr);
    return true;
}

std::optional<Picture> decodeStandardForm(std::string_view file, const PngHeader& header) {
    Picture picture{header.width, header.height, {}};
    const std::size_t rowBytes = Picture::bytesPerPixel * header.width;
    picture.rgba.resize(rowBytes * header.height);
    std::vector<png_bytep> rows;
    for (std::size_t row = 0; row < header.height; ++row)
        rows.push_back(picture.rgba.data() + row * rowBytes);
    const bool isBlueFirst = header.optimised && header.colourType != PNG_COLOR_TYPE_PALETTE;
    if (!PngReader(file).readRows(rows, rowBytes, isBlueFirst)) return std::nullopt;
    return picture;
}

std::uint8_t unpremultiplied(unsigned component, unsigned alpha) {
    return static_cast<std::uint8_t>(std::min(255U, (component * 255 + alpha / 2) / alpha));
}

void unpremultiply(Picture& picture) {
    for (std::size_t pixel = 0; pixel < picture.rgba.size(); pixel += Picture::bytesPerPixel) {
        const unsigned alpha = picture.rgba[pixel + 3];
        if (alpha == 0 || alpha == 255) continue;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            picture.rgba[pixel + channel] = unpremultiplied(picture.rgba[pixel + channel], alpha);
        }
    }
}

}  // namespace

std::optional<PngHeader> readPngHeader(std::string_view file) {
    const std::optional<Head> head = readHead(file);
    return head ? std::optional(head->header) : std::nullopt;
}

std::optional<Picture> decodePng(std::string_view file) {
    const std::optional<Head> head = readHead(file);
    if (!head) return std::nullopt;
    const auto standard = standardForm(*head);
    auto picture = standard ? decodeStandardForm(*standard, head->header) : std::nullopt;
    const bool hasAlpha = (head->header.colourType & PNG_COLOR_MASK_ALPHA) != 0;
    if (picture && head->header.optimised && hasAlpha) unpremultiply(*picture);
    return picture;
}

}  // namespace hosts
