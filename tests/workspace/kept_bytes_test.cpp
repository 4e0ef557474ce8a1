// A module of which only the bytes are kept when its edits are done.
#include "tests/support/module_text.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using support::BytesOf;

// Three lines of head, and an attribute line behind the first shown line.
const std::string File =
    "VERSION 1.0 CLASS\r\nBEGIN\r\nEND\r\nSub A()\r\nAttribute A.VB_UserMemId = 0\r\n    x\r\nEnd Sub\r\n";

std::unique_ptr<Module> Loaded() {
    return std::make_unique<Module>(File, File.find("Sub A"), DefaultEncoding());
}

TEST(KeptBytes, AreThoseOfTheEditedModule) {
    const auto module = Loaded();
    ASSERT_TRUE(module->InsertLines(Line{2}, u"    y"));
    ASSERT_TRUE(module->DeleteLines(Line{3}, 1));
    const std::string bytes = BytesOf(*module);
    const std::int64_t fileLine = module->OriginalFileLine(Line{2});
    module->KeepBytesOnly();
    EXPECT_EQ(BytesOf(*module), bytes);
    EXPECT_EQ(module->originalBytes(), File);
    EXPECT_TRUE(module->edited());
    EXPECT_FALSE(module->FirstUnencodable());
    EXPECT_EQ(module->OriginalFileLine(Line{2}), fileLine);
    EXPECT_EQ(fileLine, 6);
}

TEST(KeptBytes, AreReadAnewForTheirLines) {
    const auto module = Loaded();
    ASSERT_TRUE(module->InsertLines(Line{2}, u"    y"));
    module->KeepBytesOnly();
    EXPECT_EQ(module->AllText(), u"Sub A()\r\n    y\r\n    x\r\nEnd Sub");
    EXPECT_EQ(module->CountOfProcedures(), 1U);
    EXPECT_EQ(module->OriginalFileLine(Line{2}), 6);
    EXPECT_TRUE(module->edited());
}

TEST(KeptBytes, AreCountedAfterEveryEdit) {
    const auto module = Loaded();
    const auto isCounted = [&] { return module->CountBytes() == BytesOf(*module).size(); };
    EXPECT_TRUE(isCounted());
    ASSERT_TRUE(module->ReplaceLine(Line{2}, u"    a longer line"));
    EXPECT_TRUE(isCounted());
    ASSERT_TRUE(module->InsertLines(Line{1}, u"one\r\ntwo"));
    EXPECT_TRUE(isCounted());
    ASSERT_TRUE(module->DeleteLines(Line{3}, 2));  // the first one with the line hidden behind it
    EXPECT_TRUE(isCounted());
    for (int i = 0; i < 3000; ++i) {
        ASSERT_TRUE(module->ReplaceLine(Line{1}, Text(100, i % 2 == 0 ? u'a' : u'b')));
    }
    EXPECT_TRUE(isCounted());
    module->KeepBytesOnly();
    EXPECT_TRUE(isCounted());
    EXPECT_EQ(module->AsLoaded()->CountBytes(), File.size());
}

TEST(KeptBytes, MayBeEditedFurther) {
    const auto module = Loaded();
    ASSERT_TRUE(module->InsertLines(Line{2}, u"    y"));
    module->KeepBytesOnly();
    ASSERT_TRUE(module->ReplaceLine(Line{3}, u"    z"));
    module->KeepBytesOnly();
    EXPECT_EQ(module->AllText(), u"Sub A()\r\n    y\r\n    z\r\nEnd Sub");
    ASSERT_TRUE(module->DeleteLines(Line{2}, 1));
    ASSERT_TRUE(module->ReplaceLine(Line{2}, u"    x"));
    module->KeepBytesOnly();
    EXPECT_EQ(BytesOf(*module), File);
    EXPECT_FALSE(module->edited());
}

TEST(KeptBytes, OfAModuleWithoutEditsAreNoEdit) {
    const auto module = Loaded();
    module->KeepBytesOnly();
    EXPECT_FALSE(module->edited());
    EXPECT_EQ(BytesOf(*module), File);
    EXPECT_EQ(module->OriginalFileLine(Line{1}), 4);
    EXPECT_EQ(module->CountOfLines(), 3);
}

TEST(KeptBytes, OfAnEditThatWasTakenBackAreNoEdit) {
    const auto module = Loaded();
    ASSERT_TRUE(module->InsertLines(Line{1}, u"y"));
    ASSERT_TRUE(module->DeleteLines(Line{1}, 1));
    EXPECT_TRUE(module->edited());
    module->KeepBytesOnly();
    EXPECT_FALSE(module->edited());
}

TEST(KeptBytes, AreNotAllWhereASaveCouldNotWriteALine) {
    const auto module = Loaded();
    ASSERT_TRUE(module->InsertLines(Line{3}, u"    ' \u0416"));
    module->KeepBytesOnly();
    ASSERT_TRUE(module->FirstUnencodable());
    EXPECT_EQ(module->FirstUnencodable()->line, Line{3});
    EXPECT_EQ(module->OriginOf(Line{4}), Line{3});
}

TEST(ForgottenOriginal, IsKnownByItsMark) {
    const auto module = Loaded();
    ASSERT_TRUE(module->InsertLines(Line{2}, u"    y"));
    const std::string bytes = BytesOf(*module);
    module->KeepBytesOnly();
    module->ForgetOriginal();
    EXPECT_EQ(module->originalMark(), MarkOf(File));
    EXPECT_EQ(BytesOf(*module), bytes);
    EXPECT_TRUE(module->edited());
    EXPECT_EQ(module->CountOfLines(), 4);
    module->KeepBytesOnly();
    EXPECT_EQ(BytesOf(*module), bytes);
}

TEST(ForgottenOriginal, IsKeptWhereASaveWouldWriteIt) {
    const auto module = Loaded();
    module->KeepBytesOnly();
    module->ForgetOriginal();
    EXPECT_EQ(module->originalMark(), MarkOf(File));
    EXPECT_EQ(module->originalBytes(), File);
    EXPECT_EQ(BytesOf(*module), File);
}

TEST(LoadedModule, IsThereWhateverWasEdited) {
    const auto module = Loaded();
    ASSERT_TRUE(module->ReplaceLine(Line{2}, u"    y"));
    EXPECT_EQ(module->AsLoaded()->AllText(), u"Sub A()\r\n    x\r\nEnd Sub");
    module->KeepBytesOnly();
    EXPECT_EQ(module->AsLoaded()->AllText(), u"Sub A()\r\n    x\r\nEnd Sub");
    EXPECT_EQ(BytesOf(*module->AsLoaded()), File);
}

}  // namespace
}  // namespace lintara::workspace
