// SPDX-License-Identifier: MIT
#include "plistlib_peer.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace peers {
namespace {

using namespace platform;

std::string hexOf(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 0xF];
    }
    return text;
}

std::string bytesOf(std::string_view hex) {
    std::string bytes;
    for (std::size_t place = 0; place + 1 < hex.size(); place += 2) {
        unsigned byte = 0;
        std::from_chars(hex.data() + place, hex.data() + place + 2, byte, 16);
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

/// Takes values off the answer in the order in which they stand there.
class Decoder {
public:
    explicit Decoder(std::string_view bytes) : _rest(bytes) {}

    Value value() {
        const char kind = take(1).front();
        const auto length = static_cast<std::size_t>(number(take(4)));
        if (kind == 'a') return array(length);
        if (kind == 'd') return dictionary(length / 2);
        return scalar(kind, take(length));
    }

private:
    std::string_view take(std::size_t length) {
        if (length > _rest.size()) throw std::runtime_error("an answer that ends too early");
        const std::string_view taken = _rest.substr(0, length);
        _rest.remove_prefix(length);
        return taken;
    }

    static std::uint64_t number(std::string_view bytes) {
        std::uint64_t number = 0;
        for (const char byte : bytes)
            number = number << 8 | static_cast<unsigned char>(byte);
        return number;
    }

    static double real(std::string_view bytes) { return std::bit_cast<double>(number(bytes)); }

    static Integer integer(std::string_view digits) {
        std::int64_t negative = 0;
        std::uint64_t positive = 0;
        if (digits.starts_with('-')) {
            std::from_chars(digits.data(), digits.data() + digits.size(), negative);
            return Integer::fromSigned(negative);
        }
        std::from_chars(digits.data(), digits.data() + digits.size(), positive);
        return Integer::fromUnsigned(positive);
    }

    static Value scalar(char kind, std::string_view content) {
        switch (kind) {
            case 'b':
                return content == "\1";
            case 'i':
                return integer(content);
            case 'r':
                return real(content);
            case 's':
                return content;
            case 't':
                return Date{real(content)};
            case 'u':
                return Uid{static_cast<std::uint32_t>(integer(content).bits)};
            case 'x': {
                const auto* bytes = reinterpret_cast<const std::byte*>(content.data());
                return Data(bytes, bytes + content.size());
            }
            default:
                return Null();
        }
    }

    Array array(std::size_t count) {
        Array items;
        for (; count > 0; --count)
            items.push_back(value());
        return items;
    }

    Dictionary dictionary(std::size_t count) {
        Dictionary dictionary;
        for (; count > 0; --count) {
            const Value key = value();
            Value entry = value();
            if (key.string()) {
                dictionary.set(*key.string(), std::move(entry));
            } else {
                dictionary.addOddEntry(key, std::move(entry));
            }
        }
        return dictionary;
    }

    std::string_view _rest;
};

std::optional<std::string> writtenBytes(const std::string& word) {
    return word == "-" ? std::nullopt : std::optional(bytesOf(word));
}

}  // namespace

PlistlibPeer::PlistlibPeer() : _python({TEST_PYTHON, "-I", TEST_PLISTLIB_PEER}, {}) {}

PeerReading PlistlibPeer::read(std::string_view bytes) {
    _python.send(hexOf(bytes) + "\n");
    const auto answer = _python.readLine();
    if (!answer) throw std::runtime_error("python3 ended: " + _python.readErrorLine().value_or("without a word"));
    if (*answer == "-") return {};
    const bool isBinary = bytes.starts_with("bplist");
    std::istringstream words(*answer);
    std::string value;
    std::string xml;
    std::string binary;
    words >> value >> xml >> binary;
    const Value read = Decoder(bytesOf(value)).value();
    return {isBinary ? read : withXmlUids(read), writtenBytes(xml), writtenBytes(binary)};
}

}  // namespace peers
