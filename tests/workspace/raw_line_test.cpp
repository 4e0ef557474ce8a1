#include "workspace/raw_line.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

// Each line with what ends it, as its own text.
std::vector<std::string> Lines(std::string_view bytes, const Encoding& encoding) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < bytes.size();) {
        const RawLine line = NextRawLine(bytes, at, encoding);
        EXPECT_EQ(line.begin, at);
        EXPECT_LE(line.end, line.next);
        lines.emplace_back(bytes.substr(line.begin, line.end - line.begin));
        lines.back() += '|';
        lines.back() += std::to_string(line.next - line.end);
        EXPECT_GT(line.next, at);
        at = line.next;
    }
    return lines;
}

using Expected = std::vector<std::string>;

TEST(RawLine, EachEndingEndsALine) {
    const Encoding& encoding = *DefaultEncoding();
    EXPECT_EQ(Lines("a\r\nb\nc\rd", encoding), (Expected{"a|2", "b|1", "c|1", "d|0"}));
    EXPECT_EQ(Lines("\r\r\n\n\r", encoding), (Expected{"|1", "|2", "|1", "|1"}));
    EXPECT_EQ(Lines("a\n\rb", encoding), (Expected{"a|1", "|1", "b|0"}));
    EXPECT_EQ(Lines("last\r\n", encoding), (Expected{"last|2"}));
    EXPECT_EQ(Lines("", encoding), Expected{});
}

TEST(RawLine, LinesAreFoundAtEveryDistance) {
    for (std::size_t length = 0; length < 1030; ++length) {
        for (const std::string ending : {"\r\n", "\n", "\r"}) {
            const std::string bytes = std::string(length, 'x') + ending + "next\n\r";
            const RawLine line = NextRawLine(bytes, 0, *DefaultEncoding());
            ASSERT_EQ(line.end, length);
            ASSERT_EQ(line.next, length + ending.size());
        }
    }
}

TEST(RawLine, OtherBreaksOfUnicodeEndNoLine) {
    EXPECT_EQ(Lines("a\x0B\x0C\x85z\n", *DefaultEncoding()), (Expected{"a\x0B\x0C\x85z|1"}));
}

TEST(RawLine, InUtf16ABreakIsAWholeUnit) {
    for (const bool bigEndian : {false, true}) {
        const EncodingPtr encoding = *FindEncoding(bigEndian ? "utf-16be" : "utf-16le");
        std::string bytes;
        // Characters whose halves look like line breaks.
        ASSERT_TRUE(encoding->Encode(u"\u0A0D\u0D0A\r\nb\n\r\u0A00\u000C", bytes));
        std::vector<Text> texts;
        std::vector<std::size_t> endings;
        for (std::size_t at = 0; at < bytes.size();) {
            const RawLine line = NextRawLine(bytes, at, *encoding);
            Text text;
            encoding->Decode(std::string_view(bytes).substr(line.begin, line.end - line.begin), text);
            texts.push_back(text);
            endings.push_back(line.next - line.end);
            at = line.next;
        }
        EXPECT_EQ(texts, (std::vector<Text>{u"\u0A0D\u0D0A", u"b", u"", u"\u0A00\u000C"}));
        EXPECT_EQ(endings, (std::vector<std::size_t>{4, 2, 2, 0}));
    }
}

TEST(RawLine, AnOddLastByteBelongsToTheLastLine) {
    const std::string bytes("a\0\n\0b", 5);
    const RawLine line = NextRawLine(bytes, 4, **FindEncoding("utf-16le"));
    EXPECT_EQ(line.next, 5U);
    EXPECT_EQ(line.end, 5U);
}

}  // namespace
}  // namespace lintara::workspace
