// SPDX-License-Identifier: MIT
// What the peers make of the golden cases that can be read. Where they read something else than the
// platform, the platform is right: the table says where, and why.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/property_list.h"
#include "plistlib_peer.h"
#include "tests/property_lists/golden_cases.h"
#include "tests/property_lists/libplist_peer.h"

namespace {

using namespace platform;

struct KnownDifference {
    std::string_view name;
    std::string_view reason;
};

constexpr std::string_view knowsNoNull = "has no null object";
constexpr std::string_view knowsNoSet = "has no sets";
constexpr std::string_view rollsNothingOver = "lets no part of a date roll over";
constexpr std::string_view needsRoot = "needs an XML declaration or <plist>";
constexpr std::string_view makesLinesUnixLines = "makes every end of a line LF, as XML has it";

constexpr KnownDifference byLibplist[] = {
    {"xml-dict-self-closing-key", "wants <key></key>"},
    {"xml-ref-nul", "ends texts at U+0000"},
    {"xml-date-month-13", rollsNothingOver},
    {"xml-date-day-32", rollsNothingOver},
    {"xml-date-hour-24", rollsNothingOver},
    {"xml-tag-attribute-gt-in-quotes", "lets no quoted > end a tag"},
    {"bin-root-null", knowsNoNull},
    {"bin-null-in-dict", knowsNoNull},
    {"bin-null-in-array", knowsNoNull},
    {"bin-null-as-key", "wants texts as keys"},
    {"bin-root-set-empty", knowsNoSet},
    {"bin-set-in-dict", knowsNoSet},
    {"bin-set-duplicates", knowsNoSet},
    {"bin-date-negative-fraction", "gives the fraction of a second without its sign"},
    {"bin-date-year-10000", "gives dates as seconds of 32 bits"},
    {"bin-string-ascii-high-byte", "takes the bytes of ASCII strings for UTF-8"},
    {"bin-dict-integer-key", "wants texts as keys"},
    {"bin-dict-uid-key", "wants texts as keys"},
    {"bin-header-bplist01", "reads version 00 alone"},
};

constexpr KnownDifference byPlistlib[] = {
    {"xml-root-key", "sees <key> in dictionaries alone"},
    {"xml-crlf", makesLinesUnixLines},
    {"xml-cr-only", makesLinesUnixLines},
    {"xml-string-cr", makesLinesUnixLines},
    {"xml-prolog-no-decl", needsRoot},
    {"xml-prolog-bare-dict", needsRoot},
    {"xml-prolog-bare-dict-trailing-garbage", needsRoot},
    {"xml-prolog-bare-array", needsRoot},
    {"xml-integer-space-after-sign", "wants the digits right behind the sign"},
    {"xml-ref-nul", "knows no U+0000, as XML does not"},
    {"xml-date-month-13", rollsNothingOver},
    {"xml-date-day-32", rollsNothingOver},
    {"xml-date-feb-29-nonleap", rollsNothingOver},
    {"xml-date-hour-24", rollsNothingOver},
    {"xml-tag-attribute-gt-in-quotes", "lets no quoted > end a tag"},
    {"bin-root-set-empty", knowsNoSet},
    {"bin-set-in-dict", knowsNoSet},
    {"bin-set-duplicates", knowsNoSet},
    {"bin-date-year-10000", "has no years above 9999"},
    {"bin-string-ascii-high-byte", "wants ASCII in ASCII strings"},
    {"bin-dict-duplicate-keys-different-ref", "lets the last of equal keys win"},
    {"bin-header-bplist01", "reads version 00 alone"},
};

/// Of all cases that can be read, exactly those of the table are read otherwise, or not.
template <class Read>
void expectAgreement(Read read, std::span<const KnownDifference> table) {
    std::size_t met = 0;
    for (const golden::Case& golden : golden::cases()) {
        if (golden.isRejected()) continue;
        SCOPED_TRACE(golden.name);
        const std::string bytes = golden::input(golden);
        const PropertyListReading ours = readPropertyList(bytes);
        const auto known = std::ranges::find(table, golden.name, &KnownDifference::name);
        const bool isKnown = known != table.end();
        met += isKnown ? 1u : 0u;
        EXPECT_EQ(read(bytes, ours.format).value == ours.value, !isKnown) << (isKnown ? known->reason : "");
    }
    EXPECT_EQ(met, table.size());
}

TEST(GoldenCasesByLibplist, areReadAlikeButForKnownOnes) {
    std::vector<KnownDifference> table(std::begin(byLibplist), std::end(byLibplist));
    if (peers::libplistHasNull) std::erase_if(table, [](const auto& known) { return known.reason == knowsNoNull; });
    expectAgreement(peers::readByLibplist, table);
}

TEST(GoldenCasesByPlistlib, areReadAlikeButForKnownOnes) {
    peers::PlistlibPeer python;
    expectAgreement([&](const std::string& bytes, PropertyListFormat) { return python.read(bytes); }, byPlistlib);
}

}  // namespace
