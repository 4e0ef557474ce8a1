// The sample's bytes are what it is about; an editor or a checkout that converts them must be noticed.

#include "tests/project/include_arrows.h"
#include "tests/support/source_folder.h"

#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::project {
namespace {

const std::filesystem::path sample = support::SourceFolder() / "samples" / "invoicing";

class SampleText : public testing::TestWithParam<const char*> {};

TEST_P(SampleText, EveryLineEndsInCrLf) {
    const std::string bytes = ReadFile(sample / GetParam());
    ASSERT_FALSE(bytes.empty());
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        if (bytes[at] == '\n') {
            ASSERT_TRUE(at > 0 && bytes[at - 1] == '\r') << "a lone LF at byte " << at;
        }
        if (bytes[at] == '\r') {
            ASSERT_TRUE(at + 1 < bytes.size() && bytes[at + 1] == '\n') << "a lone CR at byte " << at;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Files, SampleText,
                         testing::Values("Invoicing.vbp", "modMain.bas", "modTax.bas", "modTypes.bas",
                                         "texts/modTexts.bas", "CInvoice.cls", "frmInvoice.frm"));

TEST(Sample, TextsAreWindows1252WithoutALastLineEnding) {
    const std::string bytes = ReadFile(sample / "texts" / "modTexts.bas");
    EXPECT_THAT(bytes, testing::HasSubstr("Gr\xF6\xDF"
                                          "en in Punkt, Betr\xE4ge in \x80."));
    EXPECT_THAT(bytes, testing::EndsWith("\nEnd Function"));
}

TEST(Sample, TheBinaryCompanionIsWhole) {
    const std::string bytes = ReadFile(sample / "frmInvoice.frx");
    EXPECT_EQ(bytes.size(), 27U);
    EXPECT_TRUE(bytes.contains('\0'));
}

TEST(Sample, BlankLinesAndIndentsKeepTheirBlanks) {
    EXPECT_THAT(ReadFile(sample / "modMain.bas"), testing::HasSubstr("\r\n    \r\n"));
    EXPECT_THAT(ReadFile(sample / "CInvoice.cls"), testing::HasSubstr("\r\n       If "));
}

}  // namespace
}  // namespace lintara::project
