// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "platform/foundation/property_list.h"

namespace xml_writing_test {

namespace {

using namespace platform;
using namespace std::string_literals;

/// The root element as written, with its indents and newlines.
std::string written(const Value& value) {
    const PropertyListWriting writing = writeXmlPropertyList(value);
    if (!writing) return "refused: " + writing.reason;
    const std::string head =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n";
    const std::string tail = "</plist>\n";
    EXPECT_TRUE(writing.bytes->starts_with(head));
    EXPECT_TRUE(writing.bytes->ends_with(tail));
    return writing.bytes->substr(head.size(), writing.bytes->size() - head.size() - tail.size());
}

Value nested(std::size_t depth, Value innermost) {
    for (std::size_t level = 0; level < depth; ++level)
        innermost = Array{std::move(innermost)};
    return innermost;
}

bool isWritable(const Value& value) {
    return static_cast<bool>(writeXmlPropertyList(value));
}

TEST(XmlWriting, writesScalars) {
    EXPECT_EQ(written(true), "<true/>\n");
    EXPECT_EQ(written(false), "<false/>\n");
    EXPECT_EQ(written(42), "<integer>42</integer>\n");
    EXPECT_EQ(written(std::numeric_limits<std::int64_t>::min()), "<integer>-9223372036854775808</integer>\n");
    EXPECT_EQ(written(std::numeric_limits<std::uint64_t>::max()), "<integer>18446744073709551615</integer>\n");
    EXPECT_EQ(written("text"), "<string>text</string>\n");
    EXPECT_EQ(written(Uid{4294967295}), "<dict>\n\t<key>CF$UID</key>\n\t<integer>4294967295</integer>\n</dict>\n");
}

TEST(XmlWriting, writesRealsInSeventeenDigits) {
    const auto real = [](double number) {
        const std::string line = written(number);
        return line.substr(6, line.size() - 14);
    };
    EXPECT_EQ(real(0.1), "0.10000000000000001");
    EXPECT_EQ(real(1), "1");
    EXPECT_EQ(real(-2.5), "-2.5");
    EXPECT_EQ(real(0), "0.0");
    EXPECT_EQ(real(-0.0), "0.0");
    EXPECT_EQ(real(1e16), "10000000000000000");
    EXPECT_EQ(real(1e17), "1e+17");
    EXPECT_EQ(real(1e-5), "1.0000000000000001e-05");
    EXPECT_EQ(real(0.0001), "0.0001");
    EXPECT_EQ(real(5e-324), "4.9406564584124654e-324");
    EXPECT_EQ(real(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
    EXPECT_EQ(real(std::numeric_limits<double>::infinity()), "+infinity");
    EXPECT_EQ(real(-std::numeric_limits<double>::infinity()), "-infinity");
    EXPECT_EQ(real(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(real(-std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(XmlWriting, writesDatesFloored) {
    const auto date = [](double seconds) {
        const std::string line = written(Date{seconds});
        return line.substr(6, line.size() - 14);
    };
    EXPECT_EQ(date(0), "2001-01-01T00:00:00Z");
    EXPECT_EQ(date(0.999), "2001-01-01T00:00:00Z");
    EXPECT_EQ(date(-0.001), "2000-12-31T23:59:59Z");
    EXPECT_EQ(date(-978307200), "1970-01-01T00:00:00Z");
    EXPECT_EQ(date(604672496), "2020-02-29T12:34:56Z");
    EXPECT_EQ(date(-63113904000), "0001-01-01T00:00:00Z");
    EXPECT_EQ(date(-63113904001), "0000-12-31T23:59:59Z");
    EXPECT_EQ(date(-63113904000 - 731 * 86400.0), "-001-01-01T00:00:00Z");
    EXPECT_EQ(date(252423993600), "10000-01-01T00:00:00Z");
}

TEST(XmlWriting, writesEachDayOfTheCalendarAsItIsRead) {
    for (double day = -800000; day < 800000; day += 97) {
        const Value date = Date{day * 86400 + 43210};
        const PropertyListWriting writing = writeXmlPropertyList(date);
        ASSERT_TRUE(writing);
        ASSERT_TRUE(*readPropertyList(*writing.bytes).value == date) << *writing.bytes;
    }
}

TEST(XmlWriting, refusesDatesThatLieInNoYear) {
    EXPECT_FALSE(isWritable(Date{1e18}));
    EXPECT_FALSE(isWritable(Date{-1e300}));
    EXPECT_FALSE(isWritable(Date{std::numeric_limits<double>::infinity()}));
    EXPECT_FALSE(isWritable(Date{std::numeric_limits<double>::quiet_NaN()}));
}

TEST(XmlWriting, escapesOnlyWhatItMust) {
    EXPECT_EQ(written("a<b>c&d\"e'f]]>"), "<string>a&lt;b&gt;c&amp;d\"e'f]]&gt;</string>\n");
    EXPECT_EQ(written("\x01\x7F\r\n\t"), "<string>\x01\x7F\r\n\t</string>\n");
    EXPECT_EQ(written("a\0b"s), "<string>a\0b</string>\n"s);
    EXPECT_EQ(written("é<€>\xF0\x9F\x98\x80&"), "<string>é&lt;€&gt;\xF0\x9F\x98\x80&amp;</string>\n");
    EXPECT_EQ(written(Dictionary{{"<&>", 1}}), "<dict>\n\t<key>&lt;&amp;&gt;</key>\n\t<integer>1</integer>\n</dict>\n");
}

TEST(XmlWriting, refusesTextThatCouldNotBeReadAgain) {
    EXPECT_FALSE(isWritable("\xFF"));
    EXPECT_FALSE(isWritable("a long text before the bad byte, and some after it: \xC3 and more"));
    EXPECT_FALSE(isWritable(Dictionary{{"\xED\xA0\x80", true}}));
}

TEST(XmlWriting, writesEmptyContainersAndText) {
    EXPECT_EQ(written(Dictionary()), "<dict/>\n");
    EXPECT_EQ(written(Array()), "<array/>\n");
    EXPECT_EQ(written(""), "<string></string>\n");
    EXPECT_EQ(written(Data()), "<data>\n</data>\n");
    EXPECT_EQ(written(Dictionary{{"", Dictionary()}}), "<dict>\n\t<key></key>\n\t<dict/>\n</dict>\n");
    EXPECT_EQ(written(Array{Data()}), "<array>\n\t<data>\n\t</data>\n</array>\n");
}

TEST(XmlWriting, indentsByATabALevel) {
    EXPECT_EQ(written(Dictionary{{"a", Array{1, Dictionary{{"b", true}}}}}),
              "<dict>\n\t<key>a</key>\n\t<array>\n\t\t<integer>1</integer>\n\t\t<dict>\n\t\t\t<key>b</key>\n"
              "\t\t\t<true/>\n\t\t</dict>\n\t</array>\n</dict>\n");
}

TEST(XmlWriting, sortsKeysByTheirUtf16Units) {
    EXPECT_EQ(written(Dictionary{
                  {"\xEF\xBF\xBD", 1}, {"\xF0\x90\x80\x80", 2}, {"b", 3}, {"B", 4}, {"", 5}, {"aa", 6}, {"a", 7}}),
              "<dict>\n\t<key></key>\n\t<integer>5</integer>\n\t<key>B</key>\n\t<integer>4</integer>\n"
              "\t<key>a</key>\n\t<integer>7</integer>\n\t<key>aa</key>\n\t<integer>6</integer>\n"
              "\t<key>b</key>\n\t<integer>3</integer>\n\t<key>\xF0\x90\x80\x80</key>\n\t<integer>2</integer>\n"
              "\t<key>\xEF\xBF\xBD</key>\n\t<integer>1</integer>\n</dict>\n");
}

/// The lines between the tags of data that is nested some levels deep.
std::vector<std::string> dataLines(std::size_t depth, std::size_t size) {
    const std::string text = written(nested(depth, Data(size, std::byte{0xFF})));
    const std::string indent(depth, '\t');
    const std::size_t begin = text.find(indent + "<data>\n") + depth + 7;
    const std::size_t end = text.find(indent + "</data>\n");
    EXPECT_NE(end, std::string::npos);
    std::vector<std::string> lines;
    for (std::size_t place = begin; place < end; place = text.find('\n', place) + 1) {
        lines.push_back(text.substr(place, text.find('\n', place) - place));
    }
    return lines;
}

TEST(XmlWriting, shortensLinesOfDataFurtherIn) {
    for (std::size_t depth = 0; depth < 14; ++depth) {
        const std::size_t tabs = std::min<std::size_t>(depth, 8);
        const std::size_t characters = 76 - 8 * tabs;
        const auto lines = dataLines(depth, characters / 4 * 3 + 1);
        ASSERT_EQ(lines.size(), 2u) << depth;
        EXPECT_EQ(lines[0], std::string(tabs, '\t') + std::string(characters, '/')) << depth;
        EXPECT_EQ(lines[1], std::string(tabs, '\t') + "/w==") << depth;
        EXPECT_EQ(dataLines(depth, characters / 4 * 3).size(), 1u) << depth;
    }
}

TEST(XmlWriting, padsBase64) {
    EXPECT_EQ(dataLines(0, 1), std::vector<std::string>{"/w=="});
    EXPECT_EQ(dataLines(0, 2), std::vector<std::string>{"//8="});
    EXPECT_EQ(dataLines(0, 3), std::vector<std::string>{"////"});
}

TEST(XmlWriting, refusesWhatXmlCannotSay) {
    Dictionary oddKey;
    oddKey.addOddEntry(1, true);
    EXPECT_FALSE(isWritable(Null()));
    EXPECT_FALSE(isWritable(Set()));
    EXPECT_FALSE(isWritable(oddKey));
    EXPECT_FALSE(isWritable(Array{1, Array{Dictionary{{"a", Null()}}}}));
}

TEST(XmlWriting, refusesWhatIsTooDeepToBeReadAgain) {
    EXPECT_TRUE(isWritable(nested(512, "x")));
    EXPECT_TRUE(isWritable(nested(512, Array())));
    EXPECT_TRUE(isWritable(nested(511, Uid{1})));
    EXPECT_FALSE(isWritable(nested(512, Uid{1})));
    EXPECT_FALSE(isWritable(nested(513, "x")));
    EXPECT_FALSE(isWritable(nested(513, Array())));
}

Value doubled(int times, Value value) {
    for (int count = 0; count < times; ++count)
        value = Array{value, value};
    return value;
}

TEST(XmlWriting, refusesContainersSharedTooOften) {
    EXPECT_TRUE(isWritable(doubled(11, "x")));
    EXPECT_FALSE(isWritable(doubled(12, "x")));
    EXPECT_FALSE(isWritable(doubled(500, "x")));
}

TEST(XmlWriting, takesAnyNumberOfValuesThatAreNotInSharedContainers) {
    Dictionary ticks;
    Array list;
    for (int index = 0; index < 10000; ++index)
        ticks.set(std::to_string(index), Array{Dictionary{{"a", index}}});
    const Value shared = "one text";
    for (int index = 0; index < 10000; ++index)
        list.push_back(shared);
    const Value value = Array{Value(std::move(ticks)), Value(std::move(list))};
    const Value alsoHeldElsewhere = value;
    EXPECT_TRUE(isWritable(value));
}

TEST(XmlWriting, refusesLargeTextSharedTooOften) {
    const Value large = std::string(1 << 20, 'x');
    EXPECT_TRUE(isWritable(Array(32, large)));
    EXPECT_FALSE(isWritable(Array(128, large)));
    EXPECT_FALSE(isWritable(Array(1024, Data(1 << 20, std::byte{0}))));
    const Value holder = Array{std::string(1 << 20, 'x')};
    EXPECT_FALSE(isWritable(Array(128, holder)));
}

}  // namespace
}  // namespace xml_writing_test
