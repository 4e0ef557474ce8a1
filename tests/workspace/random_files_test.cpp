// Files of every make, edited at random: what no edit touched keeps its bytes, and what is written reads
// again as what is shown.
#include "tests/support/random.h"
#include "tests/support/reference_module.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"
#include "workspace/module.h"
#include "workspace/raw_line.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using support::Random;

constexpr std::array<TextView, 3> endings{u"\r\n", u"\n", u"\r"};

constexpr std::array<TextView, 10> shownTexts{u"",
                                              u"",
                                              u"x = 1",
                                              u"Sub A()",
                                              u"End Sub",
                                              u"\u00E4\u00F6\u20AC",
                                              u"attribute a.VB_Name",
                                              u"Attribute VB_Name = \"late\"",
                                              u" _",
                                              u"Attribute"};

constexpr std::array<TextView, 3> hiddenTexts{u"Attribute A.VB_UserMemId = 0", u"Attribute \u00C4_1.VB_",
                                              u"Attribute x.VB_Ext_KEY = \"a\" ,\"b\""};

struct TestFile {
    std::string bytes;
    std::size_t codeBegin = 0;
    EncodingPtr encoding;
};

void Append(TestFile& file, TextView text) {
    ASSERT_TRUE(file.encoding->Encode(text, file.bytes));
}

TestFile RandomFile(Random& random) {
    TestFile file;
    switch (random.Below(5)) {
        case 0:
            file.encoding = *FindEncoding("utf-16le");
            file.bytes = "\xFF\xFE";
            break;
        case 1:
            file.encoding = *FindEncoding("utf-16be");
            file.bytes = "\xFE\xFF";
            break;
        case 2:
            file.encoding = *FindEncoding("utf-8");
            file.bytes = "\xEF\xBB\xBF";
            break;
        default:
            file.encoding = DefaultEncoding();
    }
    const std::size_t mostlyOne = random.Below(4);
    const auto end = [&] { return endings[mostlyOne < 3 ? mostlyOne : random.Below(3)]; };
    bool onlyHead = false;
    if (random.Chance(70)) {
        Append(file, u"Attribute VB_Name = \"M\"");
        onlyHead = random.Chance(10);
        if (!onlyHead) {
            Append(file, end());
        }
    }
    file.codeBegin = file.bytes.size();
    Text lastEnding;
    for (std::size_t lines = onlyHead ? 0 : random.Below(14); lines > 0; --lines) {
        const TextView text = random.Chance(25) ? random.Pick(hiddenTexts) : random.Pick(shownTexts);
        lastEnding = end();
        // The breaks of neighbours must not run into one.
        if (text.empty() && lastEnding == u"\n") {
            lastEnding = u"\r\n";
        }
        Append(file, Text(text) + lastEnding);
        if (file.encoding == DefaultEncoding() && random.Chance(10)) {
            file.bytes.insert(file.bytes.size() - lastEnding.size(), "\x81\x80\xFF");
        }
    }
    if (random.Chance(40)) {
        file.bytes.resize(file.bytes.size() - lastEnding.size() * file.encoding->unitSize());
    }
    return file;
}

// A shown line with all that belongs to it up to the next.
struct Segment {
    Text text;
    std::string bytes;
    bool touched = false;
    std::int64_t fileLine = 0;
};

bool IsHidden(TextView line) {
    const std::size_t dot = line.find(u".VB_");
    return line.starts_with(u"Attribute ") && dot != TextView::npos && dot > 10 &&
           line.substr(10, dot - 10).find(u' ') == TextView::npos;
}

std::vector<Segment> SegmentsOf(const std::string& bytes, const TestFile& file) {
    std::vector<Segment> segments;
    // A head is one line here.
    std::int64_t fileLine = file.codeBegin > 3 ? 2 : 1;
    for (std::size_t at = file.codeBegin; at < bytes.size(); ++fileLine) {
        const RawLine raw = NextRawLine(bytes, at, *file.encoding);
        Text text;
        file.encoding->Decode(std::string_view(bytes).substr(raw.begin, raw.end - raw.begin), text);
        const std::string all = bytes.substr(at, raw.next - at);
        if (!IsHidden(text)) {
            segments.push_back({text, all, false, fileLine});
        } else if (!segments.empty()) {
            segments.back().bytes += all;
        }
        at = raw.next;
    }
    return segments;
}

std::string BytesOf(const TestFile& file, TextView text) {
    std::string bytes;
    EXPECT_TRUE(file.encoding->Encode(text, bytes));
    return bytes;
}

void Touch(Module& module, std::vector<Segment>& lines, Random& random) {
    constexpr std::array<TextView, 7> texts{u"", u"", u"y = 2", u"\u00FC", u"a\r\nb", u"\r\n", u"z\r\n"};
    const std::size_t index = random.Below(lines.size() + 1);
    const Line line{static_cast<std::int32_t>(index) + 1};
    const TextView text = random.Pick(texts);
    const auto place = [&](std::size_t i) { return lines.begin() + static_cast<std::ptrdiff_t>(i); };
    const auto insert = [&](std::size_t at) {
        for (const Text& added : support::SplitAtBreaks(text)) {
            lines.insert(place(at++), Segment{added, {}, true, 0});
        }
    };
    if (random.Chance(30)) {
        ASSERT_TRUE(module.InsertLines(line, text));
        insert(index);
    } else if (index == lines.size()) {
        return;
    } else if (random.Chance(50)) {
        const std::size_t count = std::min(random.Below(random.Chance(95) ? 3 : 99), lines.size() - index);
        ASSERT_TRUE(module.DeleteLines(line, static_cast<std::int32_t>(count)));
        lines.erase(place(index), place(index + count));
    } else {
        ASSERT_TRUE(module.ReplaceLine(line, text));
        if (lines[index].text == text) {
            return;
        }
        lines.erase(place(index));
        insert(index);
    }
}

// Whether a line that no edit touched may have been written as `written`.
bool MayBeWritten(const std::vector<Segment>& lines, std::size_t i, const std::string& written,
                  const TestFile& file) {
    const std::string& bytes = lines[i].bytes;
    const std::string lf = BytesOf(file, u"\n");
    const std::string cr = BytesOf(file, u"\r");
    if (written == bytes) {
        return true;
    }
    const bool lackedEnding = !bytes.ends_with(lf) && !bytes.ends_with(cr);
    if (lackedEnding && i + 1 < lines.size()) {
        return written.starts_with(bytes);
    }
    // Where lines between them went, a CR and a LF would have become one ending.
    const bool aboveUntouched = i == 0 || !lines[i - 1].touched;
    return aboveUntouched && bytes.starts_with(lf) && written == cr + bytes;
}

void CheckWritten(const Module& module, const std::vector<Segment>& lines, const TestFile& file) {
    std::string written;
    module.AppendCurrentBytes(written);
    std::vector<Segment> again;
    if (written.size() >= file.codeBegin) {
        ASSERT_EQ(written.substr(0, file.codeBegin), file.bytes.substr(0, file.codeBegin));
        TestFile head = file;
        // A head without a line ending is given one when the first line comes.
        if (head.codeBegin == file.bytes.size() && head.codeBegin > 3 && !lines.empty() &&
            !head.bytes.ends_with(BytesOf(file, u"\n")) && !head.bytes.ends_with(BytesOf(file, u"\r"))) {
            head.codeBegin += BytesOf(file, u"\r\n").size();
        }
        again = SegmentsOf(written, head);
    }
    ASSERT_EQ(again.size(), lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        ASSERT_EQ(again[i].text, lines[i].text);
        const Line line{static_cast<std::int32_t>(i) + 1};
        Text shown;
        module.ReadLine(line, shown);
        ASSERT_EQ(shown, lines[i].text);
        ASSERT_EQ(module.FileLine(line), again[i].fileLine) << "line " << i + 1;
        ASSERT_TRUE(lines[i].touched || MayBeWritten(lines, i, again[i].bytes, file))
            << "line " << i + 1 << " was " << testing::PrintToString(lines[i].bytes) << ", is "
            << testing::PrintToString(again[i].bytes);
    }
}

// Of a module that was not edited yet.
void CheckOrigins(const Module& module) {
    for (Line line{1}; line <= Line{module.CountOfLines()}; ++line) {
        ASSERT_EQ(module.OriginOf(line), line);
        ASSERT_EQ(module.OriginalFileLine(line), module.FileLine(line));
    }
}

TEST(RandomFiles, WhatIsWrittenIsWhatIsShownAndTheRestIsUntouched) {
    for (std::uint64_t seed = 1; seed <= 1500; ++seed) {
        Random random(seed);
        const TestFile file = RandomFile(random);
        Module module(file.bytes, file.codeBegin, file.encoding);
        CheckOrigins(module);
        std::string written;
        module.AppendCurrentBytes(written);
        ASSERT_EQ(written, file.bytes) << "seed " << seed;
        ASSERT_FALSE(module.edited());

        std::vector<Segment> lines = SegmentsOf(file.bytes, file);
        ASSERT_NO_FATAL_FAILURE(CheckWritten(module, lines, file)) << "seed " << seed;
        for (int step = 0; step < 12; ++step) {
            ASSERT_NO_FATAL_FAILURE(Touch(module, lines, random));
            ASSERT_NO_FATAL_FAILURE(CheckWritten(module, lines, file))
                << "seed " << seed << ", step " << step;
        }
        EXPECT_EQ(module.originalBytes(), file.bytes);
    }
}

}  // namespace
}  // namespace lintara::workspace
