// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "platform/foundation/property_list.h"
#include "tests/kit/print.h"

namespace xml_reading_test {

namespace {

using namespace platform;
using namespace std::string_literals;

std::optional<Value> read(std::string_view bytes) {
    return readPropertyList(bytes).value;
}

#define EXPECT_READS(text, expected) EXPECT_EQ(read(text), std::optional<Value>(expected)) << (text)
#define EXPECT_REJECTED(text) EXPECT_EQ(read(text), std::nullopt) << (text)

std::string nested(std::size_t depth, const std::string& innermost) {
    std::string text;
    for (std::size_t level = 0; level < depth; ++level)
        text += "<array>";
    text += innermost;
    for (std::size_t level = 0; level < depth; ++level)
        text += "</array>";
    return text;
}

Data bytes(std::initializer_list<int> numbers) {
    Data data;
    for (const int number : numbers)
        data.push_back(static_cast<std::byte>(number));
    return data;
}

// -- The file around the root ------------------------------------------------------------------------

TEST(XmlReading, takesFilesWithoutDeclarationDoctypeOrPlist) {
    EXPECT_READS("<true/>", true);
    EXPECT_READS("<?xml version='1.0'?><true/>", true);
    EXPECT_READS("<!DOCTYPE plist><true/>", true);
    EXPECT_READS("<!DOCTYPEplist \"a\">\n<!DOCTYPE again><true/>", true);
    EXPECT_READS("\t\r\n <plist><true/></plist>", true);
    EXPECT_READS(" <?xml version=\"1.0\"?><true/>", true);
}

TEST(XmlReading, ignoresWhateverFollowsTheRoot) {
    EXPECT_READS("<true/><false/>", true);
    EXPECT_READS("<true/>\xFF\x00<"s, true);
    EXPECT_READS("<plist><true/></plist></plist>", true);
    EXPECT_READS("<dict/>junk", Dictionary());
}

TEST(XmlReading, skipsCommentsAndInstructionsBeforeTheRoot) {
    EXPECT_READS("<!-- a -- b --><?target > data?><true/>", true);
    EXPECT_READS("<!--x--><true/>", true);
    EXPECT_READS("<!-----><true/>", true);
    EXPECT_READS("<!-- \xFF\xFE --><true/>", true);
    EXPECT_REJECTED("<!-- a <true/>");
    EXPECT_REJECTED("<? a <true/>");
    EXPECT_REJECTED("<!- a --><true/>");
}

TEST(XmlReading, looksForTheEndOfACommentBeforeTheRootBehindItsFirstCharacter) {
    EXPECT_REJECTED("<!----><true/>");
    EXPECT_REJECTED("<?xml version='1.0'?>\n<!---->\n<plist><true/></plist>");
    EXPECT_READS("<!----> <!-- b --><true/>", true);
}

TEST(XmlReading, takesEmptyCommentsInsideElements) {
    EXPECT_READS("<plist><!----><true/><!----></plist>", true);
    EXPECT_READS("<dict><!----><key>a</key><!----><true/><!----></dict>", (Dictionary{{"a", true}}));
    EXPECT_REJECTED("<plist><!---><true/></plist>");
}

TEST(XmlReading, rejectsInternalSubsetsAndOtherDeclarations) {
    EXPECT_REJECTED("<!DOCTYPE plist []><true/>");
    EXPECT_REJECTED("<!DOCTYPE plist \"[\"><true/>");
    EXPECT_REJECTED("<!doctype plist><true/>");
    EXPECT_REJECTED("<!ENTITY a \"b\"><true/>");
    EXPECT_REJECTED("<!DOCTYPE plist <true/");
    EXPECT_REJECTED("<plist><!DOCTYPE plist><true/></plist>");
    EXPECT_REJECTED("<![CDATA[x]]><true/>");
}

TEST(XmlReading, rejectsFilesWithoutAnElement) {
    for (const char* text :
         {"", " ", "\n\t", "<", "<?xml version='1.0'?>", "<!-- c -->", "text", "\x0C<true/>", "</dict>"}) {
        EXPECT_REJECTED(text);
    }
    EXPECT_REJECTED("\0<true/>"s);
}

/// The old text form is no settings file.
TEST(XmlReading, rejectsTheOldTextForm) {
    for (const char* text : {"{ a = b; }", "\n{}", "( a, b )", "\"a\"", "<0102>", "// a\n{ a = b; }"})
        EXPECT_REJECTED(text);
}

TEST(XmlReading, takes512PlistsInsideEachOther) {
    const auto plists = [](std::size_t count) {
        std::string text = "<true/>";
        for (std::size_t level = 0; level < count; ++level)
            text = "<plist>" + text + "</plist>";
        return text;
    };
    EXPECT_READS(plists(512), true);
    EXPECT_REJECTED(plists(513));
}

TEST(XmlReading, wantsExactlyOneObjectInAPlist) {
    EXPECT_READS("<plist version='1.0' other=\"x\">\n<true/>\n</plist >", true);
    EXPECT_READS("<plist><plist><true/></plist></plist>", true);
    EXPECT_READS("<array><plist><true/></plist></array>", Array{true});
    for (const char* text :
         {"<plist></plist>", "<plist/>", "<plist>x</plist>", "<plist><true/>x</plist>", "<plist>x<true/></plist>",
          "<plist><true/><true/></plist>", "<plist><true/>", "<plist><true/></plist", "<plist><true/></dict>",
          "<PLIST><true/></PLIST>", "<plist a='>'><true/></plist>"}) {
        EXPECT_REJECTED(text);
    }
}

// -- Tags --------------------------------------------------------------------------------------------

TEST(XmlReading, skipsAttributesToTheFirstAngle) {
    EXPECT_READS("<string a='b'>c</string>", "c");
    EXPECT_READS("<string a='b>c'>d</string>", "c'>d");
    EXPECT_READS("<true a=\"b\"/>", true);
    EXPECT_READS("<dict\n\tclass='x'\r/>", Dictionary());
    EXPECT_READS("<array / ></array>", Array());
    EXPECT_READS("<string \xFF>a</string>", "a");
}

TEST(XmlReading, takesBlanksBeforeTheAngleOfAnEndTag) {
    EXPECT_READS("<string>a</string \t\r\n>", "a");
    EXPECT_READS("<dict></dict >", Dictionary());
    EXPECT_REJECTED("<string>a</ string>");
    EXPECT_REJECTED("<string>a</string x>");
    EXPECT_REJECTED("<string>a< /string>");
    EXPECT_REJECTED("<string>a</strin>");
    EXPECT_REJECTED("<string>a</stringy>");
    EXPECT_REJECTED("<string>a</String>");
}

TEST(XmlReading, takesBooleansOpenAndClosedButEmpty) {
    EXPECT_READS("<true/>", true);
    EXPECT_READS("<false />", false);
    EXPECT_READS("<true></true>", true);
    EXPECT_READS("<false></false >", false);
    for (const char* text : {"<true> </true>", "<true>x</true>", "<true><!-- --></true>", "<true/ >", "<true></false>",
                             "<TRUE/>", "<true", "<true>"}) {
        EXPECT_REJECTED(text);
    }
}

TEST(XmlReading, takesSelfClosingTextAndContainersOnly) {
    EXPECT_READS("<string/>", "");
    EXPECT_READS("<key/>", "");
    EXPECT_READS("<dict/>", Dictionary());
    EXPECT_READS("<array/>", Array());
    for (const char* text : {"<data/>", "<integer/>", "<real/>", "<date/>"})
        EXPECT_REJECTED(text);
}

TEST(XmlReading, rejectsUnknownTags) {
    for (const char* text : {"<foo/>", "<null/>", "<Dict/>", "<dict/x>", "<dict//>", "<dict\x0C/>", "< dict/>", "</>",
                             "<>", "<set></set>", "<dictionary/>", "<dic/>"}) {
        EXPECT_REJECTED(text);
    }
}

// -- Containers --------------------------------------------------------------------------------------

TEST(XmlReading, lastOfEqualKeysWins) {
    EXPECT_READS("<dict><key>a</key><true/><key>b</key><false/><key>a</key><integer>3</integer></dict>",
                 (Dictionary{{"a", 3}, {"b", false}}));
    EXPECT_READS("<dict><key>a</key><true/><key>&#97;</key><false/></dict>", (Dictionary{{"a", false}}));
}

TEST(XmlReading, takesAKeyInsteadOfAValueAsAString) {
    EXPECT_READS("<key>a</key>", "a");
    EXPECT_READS("<array><key>a</key></array>", Array{"a"});
    EXPECT_READS("<dict><key>a</key><key>b</key></dict>", (Dictionary{{"a", "b"}}));
}

TEST(XmlReading, rejectsKeysAndValuesThatStandAlone) {
    for (const char* text :
         {"<dict><key>a</key></dict>", "<dict><true/></dict>", "<dict><key>a</key><true/><true/></dict>",
          "<dict><key>a</key><key>b</key><true/></dict>", "<dict><key><true/></key><true/></dict>", "<dict>text</dict>",
          "<dict><key>a</key>text<true/></dict>", "<dict><key>a</key><true/>", "<dict>",
          "<dict><plist><key>a</key></plist><true/></dict>", "<dict><key>a</key><![CDATA[ ]]><true/></dict>"}) {
        EXPECT_REJECTED(text);
    }
}

TEST(XmlReading, rejectsContainersClosedAsOthers) {
    EXPECT_REJECTED("<dict></array>");
    EXPECT_REJECTED("<array></dict>");
    EXPECT_REJECTED("<dict><key>a</key><array></dict></array>");
    EXPECT_REJECTED("<array><true/>");
    EXPECT_REJECTED("<array>x</array>");
    EXPECT_REJECTED("<array>\xC2\xA0</array>");
}

TEST(XmlReading, takesBlanksCommentsAndInstructionsBetweenElements) {
    EXPECT_READS("<array>\r\n\t <!-- - -- - --><?a?><true/><?b ?? > ?>\n</array>", Array{true});
    EXPECT_REJECTED("<array><!-- </array>");
    EXPECT_REJECTED("<array><? </array>");
    EXPECT_REJECTED("<array>\x0B<true/></array>");
}

TEST(XmlReading, takes512NestedContainers) {
    EXPECT_TRUE(read(nested(512, "<string>x</string>")));
    EXPECT_TRUE(read("<plist>" + nested(512, "<string>x</string>") + "</plist>"));
    EXPECT_TRUE(read(nested(512, "")));
    EXPECT_REJECTED(nested(513, "<string>x</string>"));
    EXPECT_REJECTED(nested(513, ""));
    EXPECT_REJECTED(nested(511, "<array><dict><key>a</key><array></array></dict></array>"));
}

TEST(XmlReading, takesASelfClosingContainerAsThe513th) {
    EXPECT_TRUE(read(nested(512, "<array/>")));
    EXPECT_TRUE(read(nested(512, "<dict/>")));
    EXPECT_REJECTED(nested(513, "<dict/>"));
}

TEST(XmlReading, countsDepthNotContainers) {
    std::string text = "<array>";
    for (int count = 0; count < 2000; ++count)
        text += "<array><dict><key>a</key><array></array></dict></array>";
    EXPECT_TRUE(read(text + "</array>"));
}

TEST(XmlReading, readsADictionaryOfOnlyAUidAsAUid) {
    const auto uidDictionary = [](const std::string& value) { return "<dict><key>CF$UID</key>" + value + "</dict>"; };
    EXPECT_READS(uidDictionary("<integer>5</integer>"), Uid{5});
    EXPECT_READS(uidDictionary("<integer>4294967297</integer>"), Uid{1});
    EXPECT_READS(uidDictionary("<integer>-1</integer>"), Uid{0xFFFFFFFF});
    EXPECT_READS(uidDictionary("<real>7.9</real>"), Uid{7});
    EXPECT_READS("<dict><key>CF$UID</key><true/><key>CF$UID</key><integer>2</integer></dict>", Uid{2});
    EXPECT_READS("<dict><key>CF&#36;UID</key><integer>3</integer></dict>", Uid{3});
}

TEST(XmlReading, keepsOtherDictionariesThatHoldAUidKey) {
    EXPECT_READS("<dict><key>CF$UID</key><true/></dict>", (Dictionary{{"CF$UID", true}}));
    EXPECT_READS("<dict><key>CF$UID</key><string>5</string></dict>", (Dictionary{{"CF$UID", "5"}}));
    EXPECT_READS("<dict><key>CF$UID</key><integer>5</integer><key>a</key><true/></dict>",
                 (Dictionary{{"CF$UID", 5}, {"a", true}}));
    EXPECT_READS("<dict><key>CF$UID</key><dict><key>CF$UID</key><integer>5</integer></dict></dict>",
                 (Dictionary{{"CF$UID", Uid{5}}}));
}

// -- Numbers -----------------------------------------------------------------------------------------

std::string integer(const std::string& content) {
    return "<integer>" + content + "</integer>";
}

TEST(XmlReading, readsIntegersInEitherBase) {
    EXPECT_READS(integer("0"), 0);
    EXPECT_READS(integer("-0"), 0);
    EXPECT_READS(integer("+5"), 5);
    EXPECT_READS(integer("007"), 7);
    EXPECT_READS(integer("-42"), -42);
    EXPECT_READS(integer("0x1F"), 31);
    EXPECT_READS(integer("0X1f"), 31);
    EXPECT_READS(integer("-0x1F"), -31);
    EXPECT_READS(integer("+0x0"), 0);
    EXPECT_READS(integer(std::string(1000, '0') + "9"), 9);
    EXPECT_READS(integer("0x" + std::string(100, '0') + "a"), 10);
}

TEST(XmlReading, skipsBlanksBeforeAnIntegerAndBehindItsSign) {
    EXPECT_READS(integer(" \t\r\n5"), 5);
    EXPECT_READS(integer("\x01\x0B\x1F\x20"
                         "5"),
                 5);
    EXPECT_READS(integer("\0005"s), 5);
    EXPECT_READS(integer("- 5"), -5);
    EXPECT_READS(integer("+\n\t 5"), 5);
    EXPECT_READS(integer(" - 0x10"), -16);
    for (const char* content : {"5 ", " 5 ", "5\n",
                                "\xC2\xA0"
                                "5",
                                "- -5", "--5", "+-5", "1 2"}) {
        EXPECT_REJECTED(integer(content));
    }
}

TEST(XmlReading, readsIntegersFromTheLeastSignedToTheGreatestUnsigned) {
    EXPECT_READS(integer("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_READS(integer("-0x8000000000000000"), std::numeric_limits<std::int64_t>::min());
    EXPECT_READS(integer("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_READS(integer("9223372036854775808"), std::uint64_t{1} << 63);
    EXPECT_READS(integer("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_READS(integer("0xFFFFFFFFFFFFFFFF"), std::numeric_limits<std::uint64_t>::max());
    for (const char* content : {"-9223372036854775809", "18446744073709551616", "0x10000000000000000",
                                "-0x8000000000000001", "99999999999999999999", "-18446744073709551615"}) {
        EXPECT_REJECTED(integer(content));
    }
}

TEST(XmlReading, rejectsIntegersWithAnythingElseInThem) {
    for (const char* content :
         {"",    " ",   "-",     "+",     "- ",         "1.5",           "1e3", "1F",    "0x",    "0xg",
          "-0x", "x1F", "00x1F", "&#53;", "1<!--c-->2", "<![CDATA[1]]>", "one", "1,000", "0x1.8", "\xEF\xBC\x91"}) {
        EXPECT_REJECTED(integer(content));
    }
}

std::string real(const std::string& content) {
    return "<real>" + content + "</real>";
}

TEST(XmlReading, readsReals) {
    EXPECT_READS(real("1.5"), 1.5);
    EXPECT_READS(real("+1.5"), 1.5);
    EXPECT_READS(real("-1.5"), -1.5);
    EXPECT_READS(real(".5"), 0.5);
    EXPECT_READS(real("-.5"), -0.5);
    EXPECT_READS(real("5."), 5.0);
    EXPECT_READS(real("1e5"), 1e5);
    EXPECT_READS(real("1E+5"), 1e5);
    EXPECT_READS(real("5.e-1"), 0.5);
    EXPECT_READS(real(".5e1"), 5.0);
    EXPECT_READS(real("42"), 42.0);
    EXPECT_READS(real("007.250"), 7.25);
    EXPECT_READS(real("-0"), -0.0);
    EXPECT_READS(real("0.1"), 0.1);
    EXPECT_READS(real("4.9406564584124654e-324"), 5e-324);
    EXPECT_READS(real("1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST(XmlReading, readsRealsBehindBlanks) {
    EXPECT_READS(real(" 1.5"), 1.5);
    EXPECT_READS(real("\t\r\n -1.5"), -1.5);
    for (const char* content : {"1.5 ", "- 1.5", "+ 1.5", "1. 5", "1 e5"})
        EXPECT_REJECTED(real(content));
}

TEST(XmlReading, readsNamedReals) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const char* content : {"inf", "+inf", "Infinity", "+INFINITY", "INF"})
        EXPECT_READS(real(content), infinity);
    for (const char* content : {"-inf", "-infinity", "-InF"})
        EXPECT_READS(real(content), -infinity);
    for (const char* content : {"nan", "NaN", "NAN"}) {
        const auto number = read(real(content));
        EXPECT_TRUE(number && number->real() && std::isnan(*number->real())) << content;
    }
    for (const char* content :
         {"+nan", "-nan", " nan", " inf", "nan ", "infinit", "infinityx", "in", "- inf", "nan(1)"}) {
        EXPECT_REJECTED(real(content));
    }
}

TEST(XmlReading, readsRealsBeyondDoublesAsInfinityOrZero) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_READS(real("1e309"), infinity);
    EXPECT_READS(real("-1e400"), -infinity);
    EXPECT_READS(real("1e99999999999999999999999"), infinity);
    EXPECT_READS(real(std::string(400, '9')), infinity);
    EXPECT_READS(real("0." + std::string(400, '0') + "1e1000"), infinity);
    EXPECT_READS(real("1e-400"), 0.0);
    EXPECT_READS(real("-1e-99999999999999999999999"), -0.0);
    EXPECT_READS(real("1" + std::string(400, '0') + "e-1000"), 0.0);
    EXPECT_READS(real("." + std::string(400, '0') + "1"), 0.0);
    EXPECT_READS(real("0e99999999999999999999999"), 0.0);
}

TEST(XmlReading, rejectsRealsThatAreNone) {
    for (const char* content :
         {"",    " ",     ".",    "-",     "+",   "-.",    "e5",  ".e5",         "1e",      "1e+", "1e-",
          "1,5", "0x1p3", "0x10", "1.5.5", "--1", "1e5.5", "one", "1<!-- -->.5", "<true/>", "1d5"}) {
        EXPECT_REJECTED(real(content));
    }
}

TEST(XmlReading, readsRealsAsText) {
    EXPECT_READS(real("<![CDATA[1.5]]>"), 1.5);
    EXPECT_READS(real("1<![CDATA[.]]>5"), 1.5);
    EXPECT_READS(real("&#49;.5"), 1.5);
}

// -- Text --------------------------------------------------------------------------------------------

std::string string(const std::string& content) {
    return "<string>" + content + "</string>";
}

TEST(XmlReading, keepsTextAsItIs) {
    EXPECT_READS(string(""), "");
    EXPECT_READS(string("  a\tb\r\nc\rd  "), "  a\tb\r\nc\rd  ");
    EXPECT_READS(string("a > b ]]> \" '"), "a > b ]]> \" '");
    EXPECT_READS(string("\x01\x0C\x7F"), "\x01\x0C\x7F");
    EXPECT_READS(string("a\0b"s), "a\0b"s);
    EXPECT_READS(string(std::string(100000, 'x')), std::string(100000, 'x'));
}

TEST(XmlReading, readsReferences) {
    EXPECT_READS(string("&lt;&gt;&amp;&apos;&quot;"), "<>&'\"");
    EXPECT_READS(string("a&amp;amp;b"), "a&amp;b");
    EXPECT_READS(string("&#65;&#x41;&#x6a;&#x6A;"), "AAjj");
    EXPECT_READS(string("&#233;&#x20AC;&#x1F600;"), "é€\xF0\x9F\x98\x80");
    EXPECT_READS(string("&#0;&#;&#x;&#x0;"), "\0\0\0\0"s);
    EXPECT_READS(string("&#1114111;&#x10FFFF;"), "\xF4\x8F\xBF\xBF\xF4\x8F\xBF\xBF");
    EXPECT_READS(string("&#xFFFE;&#xD7FF;&#xE000;"), "\xEF\xBF\xBE\xED\x9F\xBF\xEE\x80\x80");
}

TEST(XmlReading, boundsTheLengthOfReferences) {
    EXPECT_READS(string("&#00000065;"), "A");
    EXPECT_REJECTED(string("&#000000065;"));
    EXPECT_READS(string("&#x00000041;"), "A");
    EXPECT_REJECTED(string("&#x000000041;"));
}

TEST(XmlReading, rejectsReferencesToNothing) {
    for (const char* content : {"&",
                                "a & b",
                                "&;",
                                "&nbsp;",
                                "&lt",
                                "&lt a",
                                "&LT;",
                                "&#65",
                                "&#65 ;",
                                "&#X41;",
                                "&#x4G;",
                                "&#4A;",
                                "&#-5;",
                                "&# 5;",
                                "&#xD800;",
                                "&#xDFFF;",
                                "&#xD83D;&#xDE00;",
                                "&#1114112;",
                                "&#x110000;",
                                "&#99999999;",
                                "&#xFFFFFFFF;",
                                "&#x80000041;",
                                "&#&#65;",
                                "&#x123456789;",
                                "&ltt;",
                                "&amp"}) {
        EXPECT_REJECTED(string(content));
    }
    EXPECT_REJECTED("<string>&");
    EXPECT_REJECTED("<string>&#");
    EXPECT_REJECTED("<string>&#x4");
}

TEST(XmlReading, readsCharacterDataSections) {
    EXPECT_READS(string("a<![CDATA[<b>&amp;]]]]>c"), "a<b>&amp;]]c");
    EXPECT_READS(string("<![CDATA[]]>"), "");
    EXPECT_READS(string("<![CDATA[a]]><![CDATA[b]]>"), "ab");
    EXPECT_READS(string("<![CDATA[]]]>"), "]");
    EXPECT_READS("<dict><key><![CDATA[a]]></key><true/></dict>", (Dictionary{{"a", true}}));
    EXPECT_REJECTED(string("<![CDATA[abc"));
    EXPECT_REJECTED(string("<![cdata[abc]]>"));
    EXPECT_REJECTED(string("<!--c-->"));
    EXPECT_REJECTED(string("<?a?>"));
    EXPECT_REJECTED("<data><![CDATA[AAAA]]></data>");
}

TEST(XmlReading, rejectsElementsInsideText) {
    EXPECT_REJECTED(string("a<b>c</b>"));
    EXPECT_REJECTED(string("<string>a</string>"));
    EXPECT_REJECTED(string("a < b"));
    EXPECT_REJECTED("<string>a</key>");
}

TEST(XmlReading, wantsValidUtf8InText) {
    EXPECT_READS(string("é€\xF0\x9F\x98\x80\xEF\xBF\xBE"), "é€\xF0\x9F\x98\x80\xEF\xBF\xBE");
    EXPECT_READS(string("\xC3<![CDATA[\xA9]]>"), "é");
    for (const char* content :
         {"\xFF", "\x80", "\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF",
          "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xC3\xC3\xA9",
          "\xC3&amp;\xA9", "\xE2\x28\xA1", "<![CDATA[\xFF]]>"}) {
        EXPECT_REJECTED(string(content));
        EXPECT_REJECTED(string(std::string(40, 'a') + content + std::string(40, 'a')));
        EXPECT_REJECTED("<dict><key>" + std::string(content) + "</key><true/></dict>");
    }
}

TEST(XmlReading, dropsOneByteOrderMarkAtTheStartOfText) {
    EXPECT_READS(string("\xEF\xBB\xBF"
                        "a"),
                 "a");
    EXPECT_READS(string("\xEF\xBB\xBF"), "");
    EXPECT_READS(string("\xEF\xBB\xBF\xEF\xBB\xBF"
                        "a"),
                 "\xEF\xBB\xBF"
                 "a");
    EXPECT_READS(string("a\xEF\xBB\xBF"), "a\xEF\xBB\xBF");
    EXPECT_READS(string("&#xFEFF;a"), "a");
    EXPECT_READS("<dict><key>\xEF\xBB\xBFk</key><true/></dict>", (Dictionary{{"k", true}}));
}

// -- Data and dates ----------------------------------------------------------------------------------

std::string data(const std::string& content) {
    return "<data>" + content + "</data>";
}

TEST(XmlReading, readsBase64) {
    EXPECT_READS(data(""), Data());
    EXPECT_READS(data("AQID"), bytes({1, 2, 3}));
    EXPECT_READS(data("\n\tAQ\r\n I\tD \x0C"), bytes({1, 2, 3}));
    EXPECT_READS(data("Aw=="), bytes({3}));
    EXPECT_READS(data("AQI="), bytes({1, 2}));
    EXPECT_READS(data("+/+/"), bytes({0xFB, 0xFF, 0xBF}));
}

TEST(XmlReading, skipsWhatIsNoBase64) {
    EXPECT_READS(data("A-Q_I*D&amp;"), bytes({1, 2, 3}));
    EXPECT_READS(data("AQID\x01!"), bytes({1, 2, 3}));
    EXPECT_REJECTED(data("AQID\x80"));
    EXPECT_REJECTED(
        data("AA\xC3\xA9"
             "AA"));
    EXPECT_REJECTED(data("AA<!--c-->AA"));
    EXPECT_REJECTED(data("AA<true/>AA"));
}

TEST(XmlReading, dropsAnUnfinishedGroupOfBase64) {
    EXPECT_READS(data("A"), Data());
    EXPECT_READS(data("AQI"), Data());
    EXPECT_READS(data("AQIDA"), bytes({1, 2, 3}));
    EXPECT_READS(data("="), Data());
}

TEST(XmlReading, countsPaddingAsZeroBits) {
    EXPECT_READS(data("===="), bytes({0}));
    EXPECT_READS(data("A==="), bytes({0}));
    EXPECT_READS(data("A=QI"), bytes({0, 4, 8}));
    EXPECT_READS(data("AQ==AQID"), bytes({1, 1, 2, 3}));
    EXPECT_READS(data("AQ= ="), bytes({1}));
    EXPECT_READS(data("AQID===="), bytes({1, 2, 3, 0}));
}

std::string date(const std::string& content) {
    return "<date>" + content + "</date>";
}

double seconds(const std::string& content) {
    const auto value = read(date(content));
    return value && value->date() ? value->date()->secondsSince2001 : std::numeric_limits<double>::quiet_NaN();
}

TEST(XmlReading, readsDatesInSecondsSince2001) {
    EXPECT_EQ(seconds("2001-01-01T00:00:00Z"), 0);
    EXPECT_EQ(seconds("2001-01-02T03:04:05Z"), 97445);
    EXPECT_EQ(seconds("1970-01-01T00:00:00Z"), -978307200);
    EXPECT_EQ(seconds("2020-02-29T12:34:56Z"), 604672496);
    EXPECT_EQ(seconds("2000-12-31T23:59:59Z"), -1);
    EXPECT_EQ(seconds("1-01-01T00:00:00Z"), -63113904000);
    EXPECT_EQ(seconds("0-01-01T00:00:00Z"), -63113904000 - 366 * 86400);
    EXPECT_EQ(seconds("-1-01-01T00:00:00Z"), -63113904000 - 731 * 86400);
    EXPECT_EQ(seconds("0002001-01-01T00:00:00Z"), 0);
    EXPECT_EQ(seconds("12001-01-01T00:00:00Z"), 10000 / 400 * 146097 * 86400.0);
}

TEST(XmlReading, rollsDatesOutOfRangeOver) {
    EXPECT_EQ(seconds("2001-01-00T00:00:00Z"), -86400);
    EXPECT_EQ(seconds("2001-01-99T00:00:00Z"), 98 * 86400);
    EXPECT_EQ(seconds("2001-02-30T00:00:00Z"), seconds("2001-03-02T00:00:00Z"));
    EXPECT_EQ(seconds("2000-02-30T00:00:00Z"), seconds("2000-03-01T00:00:00Z"));
    EXPECT_EQ(seconds("2001-01-01T24:60:60Z"), 86400 + 3600 + 60);
    EXPECT_EQ(seconds("2001-01-01T99:99:99Z"), 99 * 3600 + 99 * 60 + 99);
}

TEST(XmlReading, takesMonthsOutOfRangeAsJanuary) {
    EXPECT_EQ(seconds("2020-13-02T00:00:00Z"), seconds("2021-01-02T00:00:00Z"));
    EXPECT_EQ(seconds("2021-13-02T00:00:00Z"), seconds("2022-01-02T00:00:00Z"));
    for (const char* month : {"00", "14", "15", "50", "99"}) {
        EXPECT_EQ(seconds("2020-" + std::string(month) + "-02T00:00:00Z"), seconds("2020-01-02T00:00:00Z")) << month;
    }
}

TEST(XmlReading, rejectsDatesOfOtherForms) {
    for (const char* content : {"",
                                "2020",
                                "2020-01-02",
                                "2020-01-02T03:04:05",
                                "2020-01-02T03:04:05z",
                                "2020-01-02t03:04:05Z",
                                "2020-01-02 03:04:05Z",
                                "2020-1-02T03:04:05Z",
                                "2020-01-2T03:04:05Z",
                                "2020-01-02T3:04:05Z",
                                "2020-01-02T03:04:05.5Z",
                                "2020-01-02T03:04:05Z ",
                                " 2020-01-02T03:04:05Z",
                                "+2020-01-02T03:04:05Z",
                                "--2020-01-02T03:04:05Z",
                                "-01-02T03:04:05Z",
                                "2020-01-02T03:04:05+00:00",
                                "2020-001-02T03:04:05Z",
                                "2020-01-02T03:04:0Z",
                                "20200102T030405Z",
                                "2020--1-02T03:04:05Z",
                                "2020-01-02T03:04:05ZZ",
                                "<![CDATA[2020-01-02T03:04:05Z]]>",
                                "&#50;020-01-02T03:04:05Z"}) {
        EXPECT_REJECTED(date(content));
    }
}

TEST(XmlReading, takesYearsOf32Bits) {
    EXPECT_GT(seconds("2147483647-12-31T23:59:59Z"), 6e16);
    EXPECT_LT(seconds("-2147483647-01-01T00:00:00Z"), -6e16);
    EXPECT_REJECTED(date("2147483648-01-01T00:00:00Z"));
    EXPECT_REJECTED(date("99999999999999999999999-01-01T00:00:00Z"));
}

}  // namespace
}  // namespace xml_reading_test
