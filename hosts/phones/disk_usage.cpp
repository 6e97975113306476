// SPDX-License-Identifier: MIT
#include "hosts/phones/disk_usage.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <vector>

namespace hosts {
namespace {

std::vector<std::string_view> split(std::string_view text, char between) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(between), text.size());
        if (end > 0) parts.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

// Less than would not fit any more as bytes.
std::optional<std::uint64_t> kilobytes(std::string_view word) {
    constexpr std::uint64_t most = std::uint64_t{1} << 53;
    std::uint64_t count = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
    const bool isWhole = error == std::errc() && end == word.data() + word.size();
    return isWhole && count < most ? std::optional(count) : std::nullopt;
}

bool isShare(std::string_view word) {
    return word.ends_with('%') && kilobytes(word.substr(0, word.size() - 1));
}

// "1024-blocks Used Available Capacity", and the folder on which it is mounted.
std::optional<DiskBlocks> readColumns(std::span<const std::string_view> words) {
    const auto all = kilobytes(words[0]);
    const auto used = kilobytes(words[1]);
    const auto available = kilobytes(words[2]);
    const bool isForm = all && used && available && isShare(words[3]) && words[4].starts_with('/');
    if (!isForm || *used > *all || *available > *all) return std::nullopt;
    return DiskBlocks{1024, *all, *all - *used, *available};
}

}  // namespace

platform::Dictionary diskUsage(const DiskBlocks& blocks) {
    const auto bytes = [&blocks](std::uint64_t count) { return platform::Value{count * blocks.size}; };
    const std::uint64_t reserved = std::max(blocks.unused, blocks.available) - blocks.available;
    // One file system holds both of what a phone keeps apart, system and data.
    return {
        {"TotalDiskCapacity", bytes(blocks.all)},     {"TotalDataCapacity", bytes(blocks.all)},
        {"TotalDataAvailable", bytes(blocks.unused)}, {"AmountDataAvailable", bytes(blocks.available)},
        {"AmountDataReserved", bytes(reserved)},
    };
}

std::optional<DiskBlocks> readDiskFree(std::string_view output) {
    const auto lines = split(output, '\n');
    if (lines.size() != 2 || !lines[0].starts_with("Filesystem")) return std::nullopt;
    constexpr std::size_t columns = 5;
    const auto words = split(lines[1], ' ');
    // What is mounted may have blanks in its name, and so may the folder.
    for (std::size_t first = 1; first + columns <= words.size(); ++first) {
        if (const auto blocks = readColumns(std::span(words).subspan(first, columns))) return blocks;
    }
    return std::nullopt;
}

}  // namespace hosts
