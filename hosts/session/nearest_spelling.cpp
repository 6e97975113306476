// SPDX-License-Identifier: MIT
#include "hosts/session/nearest_spelling.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "hosts/session/printable.h"
#include "platform/foundation/ascii.h"

namespace hosts {
namespace {

// Time goes with the length; nobody misspells a name by this much.
constexpr std::size_t longestText = 256;

// Levenshtein's distance: the fewest single characters to insert, remove or replace.
std::size_t editDistance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i] == right[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

// Beyond that it is another word.
constexpr std::size_t mostSlips(std::size_t length) {
    constexpr std::size_t shortWord = 3;
    constexpr std::size_t lettersToASlip = 3;
    return length <= shortWord ? 1 : std::max<std::size_t>(2, length / lettersToASlip);
}

std::string inLowerCase(std::string_view text) {
    std::string lower(text.substr(0, longestText));
    std::ranges::transform(lower, lower.begin(), platform::lowerCase);
    return lower;
}

}  // namespace

std::string nearestSpelling(std::string_view text, std::span<const std::string> names) {
    // Case apart: a name in the wrong case is the commonest slip.
    const std::string wanted = inLowerCase(text);
    std::size_t least = mostSlips(wanted.size()) + 1;
    std::string nearest;
    for (const std::string& name : names) {
        const std::size_t distance = editDistance(wanted, inLowerCase(name));
        if (distance < least) nearest = name;
        least = std::min(least, distance);
    }
    return nearest;
}

std::string didYouMean(std::string_view name) {
    return name.empty() ? std::string() : "; did you mean " + inQuotes(name) + "?";
}

}  // namespace hosts
