// SPDX-License-Identifier: MIT
#include "hosts/phones/far/ssh_address.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/foundation/ascii.h"

namespace hosts {
namespace {

using platform::Problem;
using platform::Result;

constexpr std::string_view scheme = "ssh://";
constexpr const char* form = "the address of a phone is ssh://[USER@]HOST[:PORT][/FOLDER]";

Problem noAddress(std::string_view text, const std::string& why) {
    return {std::string(text), {}, why + "; " + form};
}

bool hasScheme(std::string_view text) {
    return text.size() >= scheme.size() && platform::equalInAnyCase(text.substr(0, scheme.size()), scheme);
}

std::optional<int> hexDigit(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return std::nullopt;
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            decoded += text[at];
            continue;
        }
        const auto high = at + 2 < text.size() ? hexDigit(text[at + 1]) : std::nullopt;
        const auto low = high ? hexDigit(text[at + 2]) : std::nullopt;
        if (!low) return std::nullopt;
        decoded += static_cast<char>(*high * 16 + *low);
        at += 2;
    }
    return decoded;
}

bool hasControlCharacter(std::string_view text) {
    return std::ranges::any_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F; });
}

bool isNameOf(std::string_view text, std::string_view others) {
    return std::ranges::all_of(text, [others](char byte) {
        const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') ||
                             (byte >= 'A' && byte <= 'Z') || static_cast<unsigned char>(byte) >= 0x80;
        return isPlain || others.find(byte) != others.npos;
    });
}

bool isPort(std::string_view text) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 1 && number <= 65535;
}

// The host and its port, of which an address of IPv6 is in brackets.
std::optional<std::string> splitPort(std::string_view text, SshAddress& address) {
    const bool isBracketed = text.starts_with('[');
    const std::size_t end = isBracketed ? text.find(']') : std::min(text.find(':'), text.size());
    if (end == text.npos) return "the bracket is not closed";
    address.host = text.substr(isBracketed ? 1 : 0, end - (isBracketed ? 1 : 0));
    const std::string_view rest = text.substr(isBracketed ? end + 1 : end);
    if (rest.empty()) return std::nullopt;
    if (!rest.starts_with(':') || !isPort(rest.substr(1))) return "the port is no number from 1 to 65535";
    address.port = rest.substr(1);
    return std::nullopt;
}

// Slashes that say nothing go, and so does the one at the end.
std::string plainFolder(const std::string& path) {
    std::string folder = std::filesystem::path(path).lexically_normal().string();
    while (folder.size() > 1 && folder.ends_with('/'))
        folder.pop_back();
    return folder.starts_with("//") ? folder.substr(1) : folder;
}

std::optional<std::string> faultIn(const SshAddress& address) {
    if (address.host.empty()) return "it names no host";
    if (hasControlCharacter(address.host) || hasControlCharacter(address.user) || hasControlCharacter(address.folder))
        return "it holds a control character";
    if (address.host.starts_with('-') || address.user.starts_with('-') || address.folder.starts_with("/-"))
        return "no part of it may begin with \"-\"";
    if (!isNameOf(address.host, ".-_:%")) return "that is no name of a host";
    if (!isNameOf(address.user, ".-_$+ \\@")) return "that is no name of a user";
    return std::nullopt;
}

}  // namespace

std::string SshAddress::text() const {
    const bool needsBrackets = host.find(':') != host.npos;
    std::string text(scheme);
    if (!user.empty()) text += user + "@";
    text += needsBrackets ? "[" + host + "]" : host;
    if (!port.empty()) text += ":" + port;
    return folder == "/" ? text : text + folder;
}

bool namesSshAddress(std::string_view named) {
    if (hasScheme(named)) return true;
    // As scp and git take it: a colon before any slash. That of another kind of address has two slashes behind it.
    const std::size_t colon = named.find(':');
    return colon != named.npos && colon > 0 && colon < named.find('/') && !named.substr(colon + 1).starts_with("//");
}

Result<SshAddress> parseSshAddress(std::string_view text) {
    if (!hasScheme(text)) {
        const std::string_view host = text.substr(0, text.find(':'));
        const std::string_view rest = text.substr(std::min(host.size() + 1, text.size()));
        return Problem{std::string(text),
                       {},
                       "a phone at an address is named ssh://" + std::string(host) +
                           (rest.starts_with('/') ? "" : "/") + std::string(rest) +
                           "; a folder with a colon in its name, ./" + std::string(text)};
    }
    const std::string_view rest = text.substr(scheme.size());
    const std::size_t slash = std::min(rest.find('/'), rest.size());
    const std::string_view authority = rest.substr(0, slash);
    const std::size_t at = authority.rfind('@');
    SshAddress address;
    if (const auto fault = splitPort(authority.substr(at == authority.npos ? 0 : at + 1), address))
        return noAddress(text, *fault);
    const auto user = percentDecoded(at == authority.npos ? std::string_view() : authority.substr(0, at));
    const auto folder = percentDecoded(rest.substr(slash));
    if (!user || !folder) return noAddress(text, "a \"%\" stands before two hexadecimal digits");
    if (user->find(':') != user->npos) return noAddress(text, "passwords are not given here, ssh asks for them");
    address.user = *user;
    if (!folder->empty()) address.folder = plainFolder(*folder);
    if (const auto fault = faultIn(address)) return noAddress(text, *fault);
    return address;
}

}  // namespace hosts
