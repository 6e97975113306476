// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>

#include "platform/foundation/property_list.h"
#include "tests/kit/print.h"

namespace xml_encoding_test {

namespace {

using namespace platform;
using namespace std::string_literals;

enum class Order { little, big };

/// Code points as units of two or four bytes.
std::string encoded(const std::u32string& text, std::size_t unitSize, Order order) {
    std::string bytes;
    const auto append = [&](char32_t unit) {
        for (std::size_t index = 0; index < unitSize; ++index) {
            const std::size_t place = order == Order::little ? index : unitSize - 1 - index;
            bytes += static_cast<char>(unit >> (8 * place) & 0xFF);
        }
    };
    for (const char32_t character : text) {
        if (unitSize == 2 && character >= 0x10000) {
            append(0xD800 + ((character - 0x10000) >> 10));
            append(0xDC00 + (character & 0x3FF));
        } else {
            append(character);
        }
    }
    return bytes;
}

std::optional<Value> read(const std::string& bytes) {
    return readPropertyList(bytes).value;
}

std::string declared(const std::string& name, const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"" + name + "\"?><string>" + content + "</string>";
}

const std::u32string document = U"<?xml version='1.0' encoding='x-unknown'?><string>aé€\U0001F600</string>";
const std::string documentText = "aé€\xF0\x9F\x98\x80";

TEST(XmlEncoding, takesUtf8WithAndWithoutMark) {
    EXPECT_EQ(read("<string>é</string>"), Value("é"));
    EXPECT_EQ(read("\xEF\xBB\xBF<string>é</string>"), Value("é"));
    EXPECT_EQ(read("\xEF\xBB\xBF\xEF\xBB\xBF<string>é</string>"), std::nullopt);
    for (const char* name : {"UTF-8", "utf-8", "Utf-8", "utf8", "UTF_8", "UTF-8 ", " u.t.f 8\xFF"})
        EXPECT_EQ(read(declared(name, "é")), Value("é")) << name;
}

TEST(XmlEncoding, takesUtf16AndUtf32WithAMarkWhateverIsDeclared) {
    for (const std::size_t unitSize : {2u, 4u}) {
        for (const Order order : {Order::little, Order::big}) {
            EXPECT_EQ(read(encoded(U"\uFEFF" + document, unitSize, order)), Value(documentText));
            EXPECT_EQ(read(encoded(document, unitSize, order)), std::nullopt);
        }
    }
    EXPECT_EQ(read("\xEF\xBB\xBF" + declared("x-unknown", "é")), Value("é"));
}

TEST(XmlEncoding, putsTheReplacementCharacterInPlaceOfLoneSurrogates) {
    const std::u32string text =
        U"\uFEFF<string>a" + std::u32string{0xD83D} + U"b" + std::u32string{0xDE00, 0xD83D} + U"</string>";
    EXPECT_EQ(read(encoded(text, 2, Order::big)), Value("a\xEF\xBF\xBD"
                                                        "b\xEF\xBF\xBD\xEF\xBF\xBD"));
    EXPECT_EQ(read(encoded(text, 2, Order::little)), Value("a\xEF\xBF\xBD"
                                                           "b\xEF\xBF\xBD\xEF\xBF\xBD"));
}

TEST(XmlEncoding, rejectsUtf32ThatIsNoCharacter) {
    EXPECT_EQ(read(encoded(U"\uFEFF<string>" + std::u32string{0x110000} + U"</string>", 4, Order::big)), std::nullopt);
    EXPECT_EQ(read(encoded(U"\uFEFF<string>" + std::u32string{0xD800} + U"</string>", 4, Order::little)), std::nullopt);
}

TEST(XmlEncoding, leavesBytesAloneThatAreTooFewForAUnit) {
    EXPECT_EQ(read(encoded(U"\uFEFF<true/>", 2, Order::little) + "x"), Value(true));
    EXPECT_EQ(read(encoded(U"\uFEFF<true/>", 4, Order::big) + "xyz"), Value(true));
    EXPECT_EQ(read("\xFF\xFE"), std::nullopt);
    EXPECT_EQ(read("\xFF\xFE<"), std::nullopt);
}

TEST(XmlEncoding, takesTheDeclaredLegacyEncodings) {
    for (const char* name : {"ISO-8859-1", "iso-8859-1", "Iso_8859-1", "iso8859-1", "latin1", "Latin-1", "l1", "cp819",
                             "CP-819", "ibm819"}) {
        EXPECT_EQ(read(declared(name, "\xE9\x80\xFF")), Value("é\xC2\x80ÿ")) << name;
    }
    for (const char* name : {"US-ASCII", "ascii", "us", "iso646-us", "ISO_646-US", "cp367", "ansi_x3.4-1968"}) {
        EXPECT_EQ(read(declared(name, "abc")), Value("abc")) << name;
    }
    for (const char* name : {"windows-1252", "WINDOWS1252", "cp1252", "Cp-1252"}) {
        EXPECT_EQ(read(declared(name, "\x80\x99\xE9\xA0")), Value("€\xE2\x84\xA2é\xC2\xA0")) << name;
    }
    EXPECT_EQ(read(declared("Windows-1252", "\x8A\x9F")), Value("ŠŸ"));
    for (const char* unused : {"\x81", "\x8D", "\x8F", "\x90", "\x9D"}) {
        EXPECT_EQ(read(declared("windows-1252", unused)), std::nullopt);
    }
}

TEST(XmlEncoding, rejectsOtherNames) {
    for (const char* name : {"", " ", "--", "x-nonsense", "macintosh", "UTF-16", "UTF-16LE", "UTF-32", "UTF-80", "utf",
                             "latin", "iso-8859-15", "iso-8859", "windows-1251", "us-ascii-x", "Shift_JIS"}) {
        EXPECT_EQ(read(declared(name, "a")), std::nullopt) << name;
    }
}

TEST(XmlEncoding, seesADeclaredNameOnlyWhereItIsLookedFor) {
    const auto reads = [](const std::string& declaration) { return read(declaration + "<true/>") == Value(true); };
    EXPECT_TRUE(reads("<?xml encoding = \"x-nonsense\"?>"));
    EXPECT_TRUE(reads("<?xml encoding =\"x-nonsense\"?>"));
    EXPECT_TRUE(reads("<?xml encoding= \"x-nonsense\"?>"));
    EXPECT_TRUE(reads("<?xml Encoding=\"x-nonsense\"?>"));
    EXPECT_TRUE(reads("<?xml encoding=x-nonsense?>"));
    EXPECT_TRUE(reads(" <?xml encoding=\"x-nonsense\"?>"));
    EXPECT_TRUE(reads("<?xml a=\">\" encoding=\"x-nonsense\"?>"));
    EXPECT_TRUE(reads("<?xml a=\"?\" encoding=\"x-nonsense\"?>"));
    EXPECT_TRUE(reads("<?xml?><?xml encoding=\"x-nonsense\"?>"));
    EXPECT_EQ(read("<?xml encoding = 'latin1'?><string>é</string>"), Value("é"));
    EXPECT_TRUE(reads("<?xml encoding='utf-8'?>"));
    EXPECT_FALSE(reads("<?xml encoding='x-nonsense'?>"));
    EXPECT_FALSE(reads("<?xml version='1.0' my-encoding='x-nonsense'?>"));
}

TEST(XmlEncoding, readsRootKeysInEveryEncoding) {
    constexpr std::string_view keys[] = {"é", "\xE9"};
    const std::u32string text = U"\uFEFF<dict><key>é</key><string>€</string></dict>";
    for (const std::size_t unitSize : {2u, 4u}) {
        EXPECT_EQ(Value(*readRootKeys(encoded(text, unitSize, Order::little), keys)), Value(Dictionary{{"é", "€"}}));
    }
    const std::string latin = "<?xml version='1.0' encoding='iso-8859-1'?><dict><key>\xE9</key><true/></dict>";
    EXPECT_EQ(Value(*readRootKeys(latin, keys)), Value(Dictionary{{"é", true}}));
}

}  // namespace
}  // namespace xml_encoding_test
