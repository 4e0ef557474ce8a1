// Lines of a module and of the file behind it: edits, line endings, hidden lines.
#include "tests/support/module_text.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using support::BytesOf;
using support::ModuleOf;
using support::TextOf;

constexpr std::int32_t Least = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();

// A module of a file in windows-1252 whose first `head` bytes are its head.
std::unique_ptr<Module> FileOf(std::string bytes, std::size_t head = 0) {
    return std::make_unique<Module>(std::move(bytes), head, DefaultEncoding());
}

TEST(Lines, AreCountedWithoutAnEmptyOneAfterTheLastEnding) {
    const std::vector<std::pair<std::string, std::int32_t>> cases{
        {"", 0},     {"a", 1},    {"a\r\n", 1}, {"a\r\nb", 2}, {"a\n", 1},       {"a\r", 1},
        {"\r\n", 1}, {"\n\n", 2}, {"\r\r", 2},  {"\n\r", 2},   {"a\r\n\r\n", 2},
    };
    for (const auto& [bytes, count] : cases) {
        EXPECT_EQ(FileOf(bytes)->CountOfLines(), count) << testing::PrintToString(bytes);
    }
}

TEST(Lines, EveryEndingEndsALine) {
    EXPECT_EQ(FileOf("a\r\nb\nc\rd")->AllText(), u"a\r\nb\r\nc\r\nd");
}

TEST(Lines, AreReadInsideTheModuleOnly) {
    const auto module = ModuleOf("a\nb\nc");
    EXPECT_EQ(module->Lines(Line{1}, 1), u"a");
    EXPECT_EQ(module->Lines(Line{1}, 3), u"a\r\nb\r\nc");
    EXPECT_EQ(module->Lines(Line{3}, 1), u"c");
    EXPECT_EQ(module->Lines(Line{1}, 0), u"");
    EXPECT_EQ(module->Lines(Line{4}, 0), u"");
    const std::pair<std::int32_t, std::int32_t> outside[]{
        {0, 1},     {0, 0},       {-1, 1},        {4, 1},        {5, 0},        {3, 2},
        {1, 4},     {1, -1},      {4, -1},        {Least, 1},    {Most, 1},     {1, Most},
        {1, Least}, {Most, Most}, {Least, Least}, {Most, Least}, {Least, Most}, {Most, 0}};
    for (const auto& [start, count] : outside) {
        EXPECT_FALSE(module->Lines(Line{start}, count)) << start << ", " << count;
    }
    EXPECT_EQ(ModuleOf("")->Lines(Line{1}, 0), u"");
    EXPECT_FALSE(ModuleOf("")->Lines(Line{1}, 1));
}

TEST(Lines, AreInserted) {
    struct Case {
        std::int32_t line;
        TextView text;
        std::string_view after;
    };
    const Case cases[]{
        {1, u"x", "x\na\nb"},       {2, u"x", "a\nx\nb"},         {3, u"x", "a\nb\nx"},
        {2, u"", "a\n\nb"},         {2, u"x\r\ny", "a\nx\ny\nb"}, {2, u"x\r\n", "a\nx\n\nb"},
        {2, u"\r\nx", "a\n\nx\nb"}, {2, u"\r\n", "a\n\n\nb"},     {3, u"\r\n\r\n", "a\nb\n\n\n"},
    };
    for (const Case& c : cases) {
        const auto module = ModuleOf("a\nb");
        ASSERT_TRUE(module->InsertLines(Line{c.line}, c.text));
        EXPECT_EQ(TextOf(*module), c.after);
    }
    const auto module = ModuleOf("a\nb");
    for (const std::int32_t line : {0, -1, 4, Least, Most}) {
        EXPECT_FALSE(module->InsertLines(Line{line}, u"x")) << line;
    }
    EXPECT_EQ(TextOf(*module), "a\nb");
    EXPECT_FALSE(module->edited());
}

TEST(Lines, AreDeleted) {
    const auto module = ModuleOf("a\nb\nc\nd");
    ASSERT_TRUE(module->DeleteLines(Line{2}, 2));
    EXPECT_EQ(TextOf(*module), "a\nd");
    ASSERT_TRUE(module->DeleteLines(Line{1}, 0));
    EXPECT_EQ(TextOf(*module), "a\nd");
    const std::pair<std::int32_t, std::int32_t> outside[]{
        {0, 1},    {3, 1},     {2, 2}, {1, -1}, {Most, 1},    {Least, 1},
        {1, Most}, {1, Least}, {0, 0}, {4, 0},  {Most, Most}, {Least, Least}};
    for (const auto& [start, count] : outside) {
        EXPECT_FALSE(module->DeleteLines(Line{start}, count)) << start << ", " << count;
    }
    EXPECT_EQ(TextOf(*module), "a\nd");
    ASSERT_TRUE(module->DeleteLines(Line{1}, 2));
    EXPECT_EQ(module->CountOfLines(), 0);
    EXPECT_EQ(module->AllText(), u"");
}

TEST(Lines, AreReplaced) {
    struct Case {
        std::int32_t line;
        TextView text;
        std::string_view after;
    };
    const Case cases[]{
        {1, u"x", "x\nb"},         {2, u"x", "a\nx"},
        {2, u"", "a\n"},           {1, u"x\r\ny", "x\ny\nb"},
        {1, u"x\r\n", "x\n\nb"},   {2, u"\r\n", "a\n\n"},
        {1, u"a\r\nb", "a\nb\nb"}, {2, u"x\r\ny\r\nz", "a\nx\ny\nz"},
    };
    for (const Case& c : cases) {
        const auto module = ModuleOf("a\nb");
        ASSERT_TRUE(module->ReplaceLine(Line{c.line}, c.text));
        EXPECT_EQ(TextOf(*module), c.after);
    }
    const auto module = ModuleOf("a\nb");
    for (const std::int32_t line : {0, -1, 3, Least, Most}) {
        EXPECT_FALSE(module->ReplaceLine(Line{line}, u"x")) << line;
        EXPECT_FALSE(module->ReplaceLine(Line{line}, u"x\r\ny")) << line;
        EXPECT_FALSE(module->RestoreLine(Line{line}, u"x")) << line;
    }
    EXPECT_FALSE(module->RestoreLine(Line{1}, u"x\r\ny"));
    EXPECT_EQ(TextOf(*module), "a\nb");
    EXPECT_FALSE(module->edited());
}

TEST(Lines, OnlyCrLfSeparatesLinesOfATextThatIsHandedIn) {
    const auto module = ModuleOf("a\nb");
    ASSERT_TRUE(module->InsertLines(Line{2}, u"x\ry\nz\n\rq\r\r\n\n"));
    EXPECT_EQ(module->CountOfLines(), 4);
    EXPECT_EQ(module->Lines(Line{2}, 1), u"x\ry\nz\n\rq\r");
    EXPECT_EQ(module->Lines(Line{3}, 1), u"\n");
    ASSERT_TRUE(module->ReplaceLine(Line{1}, u"p\rq"));
    EXPECT_EQ(module->Lines(Line{1}, 1), u"p\rq");
    EXPECT_EQ(module->CountOfLines(), 4);
}

TEST(Lines, AReplacementByTheSameTextIsNoEdit) {
    const auto module = FileOf("a\x81\n");
    ASSERT_TRUE(module->ReplaceLine(Line{1}, u"a\u0081"));
    EXPECT_FALSE(module->edited());
    ASSERT_TRUE(module->ReplaceLine(Line{1}, u"b"));
    EXPECT_TRUE(module->edited());
    EXPECT_EQ(module->originalBytes(), "a\x81\n");
}

struct FileCase {
    std::string_view name;
    std::string bytes;
    void (*edit)(Module&);
    std::string after;
};

void CheckFiles(const std::vector<FileCase>& cases) {
    for (const FileCase& c : cases) {
        const auto module = FileOf(c.bytes);
        EXPECT_EQ(BytesOf(*module), c.bytes) << c.name;
        c.edit(*module);
        EXPECT_EQ(BytesOf(*module), c.after) << c.name;
        EXPECT_EQ(FileOf(BytesOf(*module))->AllText(), module->AllText()) << c.name;
    }
}

void Insert(Module& module, std::int32_t line, TextView text) {
    ASSERT_TRUE(module.InsertLines(Line{line}, text));
}
void Replace(Module& module, std::int32_t line, TextView text) {
    ASSERT_TRUE(module.ReplaceLine(Line{line}, text));
}
void Delete(Module& module, std::int32_t line, std::int32_t count) {
    ASSERT_TRUE(module.DeleteLines(Line{line}, count));
}

TEST(LineEndings, EachLineKeepsItsOwn) {
    CheckFiles({
        {"replaced", "a\r\nb\nc\rd", [](Module& m) { Replace(m, 2, u"x"); }, "a\r\nx\nc\rd"},
        {"all replaced", "a\r\nb\nc\rd",
         [](Module& m) {
             for (std::int32_t line = 1; line <= 4; ++line) {
                 Replace(m, line, u"xy");
             }
         },
         "xy\r\nxy\nxy\rxy"},
        {"deleted around", "a\r\nb\nc\rd", [](Module& m) { Delete(m, 2, 1); }, "a\r\nc\rd"},
        {"inserted between", "a\nb\nc\rd\r\n", [](Module& m) { Insert(m, 4, u"x"); }, "a\nb\nc\rx\nd\r\n"},
    });
}

TEST(LineEndings, ANewLineTakesTheEndingMostUsed) {
    CheckFiles({
        {"CR LF", "a\r\nb\r\nc\n", [](Module& m) { Insert(m, 4, u"x\r\ny"); }, "a\r\nb\r\nc\nx\r\ny\r\n"},
        {"LF", "a\r\nb\nc\n", [](Module& m) { Insert(m, 1, u"x"); }, "x\na\r\nb\nc\n"},
        {"CR", "a\rb\rc\n", [](Module& m) { Insert(m, 2, u"x"); }, "a\rx\rb\rc\n"},
        {"by replacement", "a\nb\nc\r\n", [](Module& m) { Replace(m, 3, u"x\r\ny"); }, "a\nb\nx\r\ny\n"},
        {"none yet", "", [](Module& m) { Insert(m, 1, u"x\r\ny"); }, "x\r\ny\r\n"},
        {"none yet, one line", "a", [](Module& m) { Insert(m, 1, u"x"); }, "x\r\na"},
        {"none left", "a\n", [](Module& m) { Delete(m, 1, 1), Insert(m, 1, u"x"); }, "x\r\n"},
        {"as it is now", "a\nb\nc\r\nd\r\ne\r\n", [](Module& m) { Delete(m, 3, 2), Insert(m, 1, u"x"); },
         "x\na\nb\ne\r\n"},
    });
}

TEST(LineEndings, ALastLineWithoutEndingKeepsHavingNone) {
    CheckFiles({
        {"replaced", "a\nb", [](Module& m) { Replace(m, 2, u"x"); }, "a\nx"},
        {"replaced by several", "a\nb", [](Module& m) { Replace(m, 2, u"x\r\ny"); }, "a\nx\ny"},
        {"a line above", "a\nb", [](Module& m) { Insert(m, 2, u"x"); }, "a\nx\nb"},
        {"a line behind", "a\nb", [](Module& m) { Insert(m, 3, u"x\r\ny"); }, "a\nb\nx\ny"},
        {"a line behind and away", "a\nb", [](Module& m) { Insert(m, 3, u"x"), Delete(m, 3, 1); }, "a\nb"},
        {"behind and between", "a\nb", [](Module& m) { Insert(m, 3, u"x"), Insert(m, 3, u"y"); },
         "a\nb\ny\nx"},
        {"deleted", "a\nb", [](Module& m) { Delete(m, 2, 1); }, "a\n"},
        {"deleted and one more", "a\nb", [](Module& m) { Delete(m, 2, 1), Insert(m, 2, u"x"); }, "a\nx\n"},
        {"empty, it could not be told from none", "a\nb", [](Module& m) { Replace(m, 2, u""); }, "a\n\n"},
        {"empty for a while", "a\nb", [](Module& m) { Replace(m, 2, u""), Replace(m, 2, u"b"); }, "a\nb"},
        {"an empty one behind", "a\nb", [](Module& m) { Insert(m, 3, u""); }, "a\nb\n\n"},
        {"the only line", "a", [](Module& m) { Replace(m, 1, u""); }, "\r\n"},
        {"all", "a\nb", [](Module& m) { Delete(m, 1, 2); }, ""},
    });
}

// A line that ends in CR above an empty one that ends in LF would be one line when the file is read again.
TEST(LineEndings, NeverRunIntoOne) {
    CheckFiles({
        {"the lower line is edited", "a\rb\nc\n", [](Module& m) { Replace(m, 2, u""); }, "a\r\r\nc\n"},
        {"and edited again", "a\rb\nc\n", [](Module& m) { Replace(m, 2, u""), Replace(m, 2, u"x"); },
         "a\rx\nc\n"},
        {"the upper line is new", "a\r\rb\n\nc\r", [](Module& m) { Insert(m, 4, u"x"); },
         "a\r\rb\nx\r\n\nc\r"},
        {"lines between are deleted", "a\rb\n\nc\n", [](Module& m) { Delete(m, 2, 1); }, "a\r\r\nc\n"},
        {"an empty last line", "x\ny\na\rb", [](Module& m) { Replace(m, 4, u""); }, "x\ny\na\r\r\n"},
        {"behind a last line that got empty", "x\ny\na\rb",
         [](Module& m) { Insert(m, 5, u"z"), Replace(m, 4, u""); }, "x\ny\na\r\r\nz"},
        {"after CR LF nothing changes", "a\r\nb\nc\n", [](Module& m) { Replace(m, 2, u""); }, "a\r\n\nc\n"},
    });
}

constexpr std::string_view Hidden = "Attribute A.VB_UserMemId = 0\r\n";

std::string With(std::initializer_list<std::string_view> pieces) {
    std::string all;
    for (const std::string_view piece : pieces) {
        all += piece;
    }
    return all;
}

TEST(HiddenLines, AreNeitherShownNorCounted) {
    const auto module = FileOf(With({"Sub A()\r\n", Hidden, Hidden, "End Sub\r\n", Hidden}));
    EXPECT_EQ(TextOf(*module), "Sub A()\nEnd Sub");
    EXPECT_EQ(module->CountOfLines(), 2);
    EXPECT_EQ(module->FileLine(Line{1}), 1);
    EXPECT_EQ(module->FileLine(Line{2}), 4);
}

TEST(Origins, GoWithTheirLinesThroughEdits) {
    const auto module =
        FileOf(With({"Sub A()\r\n", Hidden, "    x = 1\r\n", "    y = 2\r\n", "End Sub\r\n"}));
    ASSERT_TRUE(module->ReplaceLine(Line{2}, u"    x = 3"));
    ASSERT_TRUE(module->InsertLines(Line{2}, u"    a\r\n    b"));
    ASSERT_TRUE(module->DeleteLines(Line{5}, 1));
    std::vector<std::int32_t> origins;
    for (Line line{1}; line <= Line{module->CountOfLines()}; ++line) {
        origins.push_back(module->OriginOf(line).value());
    }
    EXPECT_EQ(origins, (std::vector<std::int32_t>{1, 0, 0, 2, 4}));
    EXPECT_EQ(module->OriginalFileLine(Line{1}), 1);
    EXPECT_EQ(module->OriginalFileLine(Line{2}), 3);
    EXPECT_EQ(module->OriginalFileLine(Line{4}), 5);
    EXPECT_EQ(module->FileLine(Line{5}), 6);
}

TEST(HiddenLines, BeginAtColumnOneWithANameADotAndVb) {
    for (const std::string line : {"Attribute A.VB_UserMemId = 0", "Attribute \xC4_1.VB_Description = \"x\"",
                                   "Attribute A.VB_", "Attribute A.VB_x.y"}) {
        EXPECT_EQ(FileOf("x\n" + line + "\ny")->CountOfLines(), 2) << line;
    }
    for (const std::string line :
         {" Attribute A.VB_UserMemId = 0", "attribute A.VB_UserMemId = 0", "Attribute VB_Name = \"A\"",
          "Attribute  A.VB_UserMemId", "Attribute\tA.VB_UserMemId", "Attribute A.B.VB_x", "Attribute .VB_x",
          "Attribute A .VB_x", "Attribute A.vb_x", "Attribute A. VB_x", "Attribute 1A.VB_x",
          "Attribute _A.VB_x", "Attribute A.VBx", "Attribute A!VB_x", "AttributeA.VB_x",
          "' Attribute A.VB_x"}) {
        EXPECT_EQ(FileOf("x\n" + line + "\ny")->CountOfLines(), 3) << line;
    }
}

TEST(HiddenLines, BelongToTheShownLineBeforeThem) {
    const std::string before = With({"Sub A()\r\n", Hidden, "End Sub\r\n"});
    CheckFiles({
        {"lines come behind", before, [](Module& m) { Insert(m, 2, u"x"); },
         With({"Sub A()\r\n", Hidden, "x\r\nEnd Sub\r\n"})},
        {"lines come above", before, [](Module& m) { Insert(m, 1, u"x"); },
         With({"x\r\nSub A()\r\n", Hidden, "End Sub\r\n"})},
        {"the line is replaced", before, [](Module& m) { Replace(m, 1, u"Sub B()"); },
         With({"Sub B()\r\n", Hidden, "End Sub\r\n"})},
        {"the line is replaced by several", before, [](Module& m) { Replace(m, 1, u"Sub A()\r\nx"); },
         With({"Sub A()\r\n", Hidden, "x\r\nEnd Sub\r\n"})},
        {"the line goes", before, [](Module& m) { Delete(m, 1, 1); }, "End Sub\r\n"},
        {"the next line goes", before, [](Module& m) { Delete(m, 2, 1); }, With({"Sub A()\r\n", Hidden})},
        {"at the end", With({"x\n", Hidden}), [](Module& m) { Insert(m, 2, u"y"); },
         With({"x\n", Hidden, "y\n"})},
        {"at the end without an ending", With({"x\n", Hidden.substr(0, Hidden.size() - 2)}),
         [](Module& m) { Insert(m, 2, u"y"); }, With({"x\n", Hidden.substr(0, Hidden.size() - 2), "\ny"})},
    });
}

TEST(HiddenLines, AboveTheFirstShownLineStay) {
    CheckFiles({
        {"the first line goes", With({Hidden, "x\r\ny\r\n"}), [](Module& m) { Delete(m, 1, 1); },
         With({Hidden, "y\r\n"})},
        {"a line comes", With({Hidden, "x\r\n"}), [](Module& m) { Insert(m, 1, u"y"); },
         With({Hidden, "y\r\nx\r\n"})},
        {"there is no other", std::string(Hidden), [](Module& m) { Insert(m, 1, u"y"); },
         With({Hidden, "y\r\n"})},
    });
}

TEST(FileHead, IsKeptAndNeverShown) {
    const std::string head = "VERSION 1.0 CLASS\nBEGIN\n  MultiUse = -1\nEND\nAttribute VB_Name = \"C\"\n";
    const auto module = FileOf(head + "x\ny", head.size());
    EXPECT_EQ(TextOf(*module), "x\ny");
    EXPECT_EQ(module->FileLine(Line{1}), 6);
    ASSERT_TRUE(module->DeleteLines(Line{1}, 2));
    EXPECT_EQ(BytesOf(*module), head);
    ASSERT_TRUE(module->InsertLines(Line{1}, u"z"));
    // There is no line in the module yet; the head's own ending is what there is to go by.
    EXPECT_EQ(BytesOf(*module), head + "z\n");
}

TEST(FileHead, IsGivenAnEndingThatItLacksWhenTheFirstLineComes) {
    const std::string head = "Attribute VB_Name = \"M\"";
    const auto module = FileOf(head, head.size());
    EXPECT_EQ(BytesOf(*module), head);
    ASSERT_TRUE(module->InsertLines(Line{1}, u"x"));
    EXPECT_EQ(BytesOf(*module), head + "\r\nx\r\n");
    ASSERT_TRUE(module->DeleteLines(Line{1}, 1));
    EXPECT_EQ(BytesOf(*module), head);
}

TEST(FileHead, AByteOrderMarkAloneIsNoLine) {
    const std::string mark = "\xEF\xBB\xBF";
    const auto file = [&](const std::string& code) {
        return std::make_unique<Module>(mark + code, mark.size(), *FindEncoding("utf-8"));
    };
    auto module = file("");
    ASSERT_TRUE(module->InsertLines(Line{1}, u"x"));
    EXPECT_EQ(BytesOf(*module), mark + "x\r\n");
    module = file("a\nb\n");
    ASSERT_TRUE(module->ReplaceLine(Line{1}, u"\u20AC"));
    EXPECT_EQ(BytesOf(*module), mark + "\xE2\x82\xAC\nb\n");
}

TEST(Bytes, OfLinesThatNoEditTouchedAreKept) {
    // Bytes that windows-1252 leaves undefined, controls, a NUL, a form feed, an unpaired quote.
    const std::string odd("\x81\x8D\x90 \x9D\x80\xFF\0\x0C\x0B\"\x1A\n", 13);
    CheckFiles({
        {"above and below", odd + "x\r\n" + odd, [](Module& m) { Replace(m, 2, u"\u20AC\u0081"); },
         odd + "\x80\x81\r\n" + odd},
        {"moved", odd + odd, [](Module& m) { Insert(m, 1, u"x"), Delete(m, 2, 1); }, "x\n" + odd},
    });
}

TEST(Bytes, Utf16IsWrittenAsItWasRead) {
    for (const bool bigEndian : {false, true}) {
        const EncodingPtr encoding = *FindEncoding(bigEndian ? "utf-16be" : "utf-16le");
        const auto bytes = [&](TextView text) {
            std::string all = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
            EXPECT_TRUE(encoding->Encode(text, all));
            return all;
        };
        Module module(bytes(u"a\n\u0A0D\u0D0A\r\nAttribute \u00C4.VB_x\r\U0001F600"), 2, encoding);
        EXPECT_EQ(module.AllText(), u"a\r\n\u0A0D\u0D0A\r\n\U0001F600");
        ASSERT_TRUE(module.ReplaceLine(Line{1}, u"\u4E2D"));
        ASSERT_TRUE(module.InsertLines(Line{4}, u"b"));
        EXPECT_EQ(BytesOf(module), bytes(u"\u4E2D\n\u0A0D\u0D0A\r\nAttribute \u00C4.VB_x\r\U0001F600\r\nb"));
        EXPECT_FALSE(module.FirstUnencodable());
    }
}

TEST(Bytes, WhatCannotBeWrittenIsTold) {
    const auto module = FileOf("a\nb\n");
    EXPECT_FALSE(module->FirstUnencodable());
    ASSERT_TRUE(module->InsertLines(Line{3}, u"z\u4E2D"));
    ASSERT_TRUE(module->ReplaceLine(Line{2}, u"xy\U0001F600"));
    auto unencodable = module->FirstUnencodable();
    ASSERT_TRUE(unencodable);
    EXPECT_EQ(unencodable->line, Line{2});
    EXPECT_EQ(unencodable->column, Column{3});
    EXPECT_EQ(unencodable->character, U'\U0001F600');
    // The text itself is there.
    EXPECT_EQ(module->AllText(), u"a\r\nxy\U0001F600\r\nz\u4E2D");
    ASSERT_TRUE(module->DeleteLines(Line{2}, 1));
    unencodable = module->FirstUnencodable();
    ASSERT_TRUE(unencodable);
    EXPECT_EQ(unencodable->line, Line{2});
    EXPECT_EQ(unencodable->character, U'\u4E2D');
    ASSERT_TRUE(module->ReplaceLine(Line{2}, u"z\u20AC"));
    EXPECT_FALSE(module->FirstUnencodable());
    EXPECT_EQ(BytesOf(*module), "a\nz\x80\n");
}

TEST(Lines, OfAModuleInMemoryAreThoseOfTheText) {
    const auto module = Module::FromText(u"a\r\n\xD800\r\n");
    EXPECT_EQ(module->AllText(), u"a\r\n\xD800");
    ASSERT_TRUE(module->InsertLines(Line{3}, u"\U0001F600\xDC00"));
    EXPECT_EQ(module->AllText(), u"a\r\n\xD800\r\n\U0001F600\xDC00");
    EXPECT_FALSE(module->FirstUnencodable());
}

}  // namespace
}  // namespace lintara::workspace
