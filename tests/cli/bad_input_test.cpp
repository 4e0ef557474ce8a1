// Input that cannot be worked on: a clear message, and nothing changed.
#include "tests/cli/command_run.h"
#include "tests/support/other_process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using namespace std::string_literals;
using testing::AllOf;
using testing::HasSubstr;

constexpr const char* Insert = "insert @Shop.vbp --line-numbers";

class BadInput : public testing::Test {
  protected:
    void SetUp() override { test.WriteShop(); }

    // Runs an insertion that has to fail and to leave every file as it was.
    std::string MessageOf(std::string_view line = Insert, int status = 3) {
        const auto before = test.Files();
        const Outcome outcome = test.Run(line);
        EXPECT_EQ(outcome.status, status) << outcome.err;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(test.Files(), before);
        return outcome.err;
    }

    CommandTest test;
};

TEST_F(BadInput, PathThatIsNotThere) {
    EXPECT_THAT(MessageOf("insert @nothing.vbp --line-numbers"), HasSubstr("DIR/nothing.vbp: error: "));
    EXPECT_THAT(MessageOf("list @nothing.vbp"), HasSubstr("DIR/nothing.vbp: error: "));
    EXPECT_THAT(MessageOf("insert @no/Shop.vbp --line-numbers"), HasSubstr("DIR/no/Shop.vbp: error: "));
}

TEST_F(BadInput, PathThatIsNoProject) {
    test.Write("notes.txt", "hello");
    EXPECT_THAT(MessageOf("insert @notes.txt --line-numbers"), HasSubstr("DIR/notes.txt"));
    std::filesystem::create_directory(test.Path("empty"));
    const Outcome outcome = test.Run("insert @empty --line-numbers");
    EXPECT_THAT(outcome.status, testing::AnyOf(0, 3));
}

TEST_F(BadInput, FolderWhereAFileIsExpected) {
    std::filesystem::remove(test.Path("Main.bas"));
    std::filesystem::create_directory(test.Path("Main.bas"));
    EXPECT_THAT(MessageOf(), HasSubstr("Main.bas"));
    std::filesystem::create_directory(test.Path("Folder.vbp"));
    EXPECT_EQ(test.Run("insert @Folder.vbp --line-numbers").out.contains("Numbered"), false);
}

TEST_F(BadInput, EveryMissingFileIsNamed) {
    std::filesystem::remove(test.Path("Main.bas"));
    std::filesystem::remove(test.Path("lib/Stock.bas"));
    EXPECT_THAT(MessageOf(), AllOf(HasSubstr("Main.bas"), HasSubstr("Stock.bas")));
}

TEST_F(BadInput, MissingFilesAreWarningsWhenTold) {
    std::filesystem::remove(test.Path("Main.bas"));
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --skip-missing");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("warning"), HasSubstr("Main.bas")));
    EXPECT_THAT(test.Read("lib/Stock.bas"), HasSubstr("10000:"));
}

TEST_F(BadInput, FileNamedTwice) {
    test.Write("Shop.vbp", "Module=Main; Main.bas\r\nModule=Again; MAIN.BAS\r\nName=\"Shop\"\r\n");
    EXPECT_THAT(MessageOf(), HasSubstr("DIR/Shop.vbp:2"));
}

TEST_F(BadInput, UnclosedBegin) {
    test.Write("f.frm", "VERSION 5.00\r\nBegin VB.Form f\r\n   Caption = \"x\"\r\n");
    EXPECT_THAT(MessageOf("insert @f.frm --line-numbers"), HasSubstr("DIR/f.frm:2: error: "));
}

TEST_F(BadInput, UnknownCodePage) {
    EXPECT_THAT(MessageOf("insert @Shop.vbp --line-numbers --code-page klingon", 2),
                AllOf(HasSubstr("--code-page"), HasSubstr("klingon")));
}

// Content that is no code is carried along: the run works, and no byte that is not part of a procedure
// changes.
struct ContentCase {
    const char* name;
    std::string bytes;
};

void PrintTo(const ContentCase& c, std::ostream* out) {
    *out << c.name;
}

std::string Garbage() {
    std::string bytes;
    std::uint32_t state = 1;
    for (int i = 0; i < 100'000; ++i) {
        state = state * 1664525 + 1013904223;
        bytes += static_cast<char>(state >> 24);
    }
    return bytes;
}

std::string Utf16(std::string_view ascii, bool mark) {
    std::string bytes = mark ? "\xff\xfe" : "";
    for (const char c : ascii) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

constexpr std::string_view Code = "Sub A()\r\n    x = \"y\"\r\nEnd Sub\r\n";

const ContentCase contentCases[] = {
    {"Garbage", Garbage()},
    {"ZeroBytes", ""},
    {"LineOfFiveMegabytes", "Sub A()\r\n    x = \"" + std::string(5'000'000, 'y') + "\"\r\nEnd Sub\r\n"},
    {"NulBytes", "Sub A()\r\n    x = \"\0\"\r\n\0\r\nEnd Sub\r\n"s},
    {"OnlyNulBytes", std::string(1000, '\0')},
    {"Utf8WithMark", "\xef\xbb\xbf" + Replaced(Code, "y", "ä")},
    {"Utf8WithoutMark", Replaced(Code, "y", "ä")},
    {"Utf16WithMark", Utf16(Code, true)},
    {"Utf16WithoutMark", Utf16(Code, false)},
    {"NoLastLineEnding", "Sub A()\r\n    x = 1\r\nEnd Sub"},
    {"LoneReturns", "Sub A()\r    x = 1\rEnd Sub\r"},
    {"MixedEndings", "Sub A()\r\n    x = 1\n    y = 2\r    z = 3\r\nEnd Sub\n"},
    {"UndefinedBytes", "Sub A()\r\n    x = \"\x81\x8d\x8f\x90\x9d\"\r\nEnd Sub\r\n"},
};

class OddContent : public BadInput, public testing::WithParamInterface<ContentCase> {};

TEST_P(OddContent, ComesBackByteForByte) {
    test.Write("odd.bas", GetParam().bytes);
    const Outcome inserted = test.Run("insert @odd.bas --line-numbers --quiet");
    if (inserted.status == 3) {
        EXPECT_THAT(inserted.err, HasSubstr("DIR/odd.bas"));
    } else {
        EXPECT_EQ(inserted.status, 0) << inserted.err;
        const bool readable = GetParam().bytes.starts_with("Sub") || GetParam().bytes.contains("S\0u\0b"s) ||
                              GetParam().bytes.starts_with("\xef");
        if (readable && GetParam().name != "Utf16WithoutMark"s) {
            EXPECT_NE(test.Read("odd.bas"), GetParam().bytes) << "nothing was numbered";
        }
        EXPECT_EQ(test.Run("remove @odd.bas --line-numbers --quiet").status, 0);
    }
    EXPECT_EQ(test.Read("odd.bas"), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(Cases, OddContent, testing::ValuesIn(contentCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(BadInput, OnOneComponentOfAProjectChangesNoOther) {
    test.Write("Shop.vbp", test.Read("Shop.vbp") + "Form=f.frm\r\n");
    test.Write("f.frm", "VERSION 5.00\r\nBegin VB.Form f\r\n");
    EXPECT_THAT(MessageOf(), HasSubstr("DIR/f.frm:2"));
}

TEST_F(BadInput, FolderThatCannotBeWritten) {
    const auto before = test.Files();
    const std::string message = support::AsOrdinaryUser(test.folder(), [&] {
        std::filesystem::permissions(test.Path("lib"), std::filesystem::perms(0555));
        const Outcome outcome = test.Run(Insert);
        std::filesystem::permissions(test.Path("lib"), std::filesystem::perms(0755));
        return std::to_string(outcome.status) + " " + outcome.err;
    });
    EXPECT_THAT(message, AllOf(testing::StartsWith("3 "), HasSubstr("DIR/lib")));
    EXPECT_EQ(test.Files(), before);
}

TEST_F(BadInput, FileThatCannotBeRead) {
    const auto before = test.Files();
    const std::string message = support::AsOrdinaryUser(test.folder(), [&] {
        std::filesystem::permissions(test.Path("Main.bas"), std::filesystem::perms(0));
        const Outcome outcome = test.Run(Insert);
        std::filesystem::permissions(test.Path("Main.bas"), std::filesystem::perms(0644));
        return std::to_string(outcome.status) + " " + outcome.err;
    });
    EXPECT_THAT(message, AllOf(testing::StartsWith("3 "), HasSubstr("DIR/Main.bas")));
    EXPECT_EQ(test.Files(), before);
}

TEST_F(BadInput, CheckAndDiffNeedNoRightToWrite) {
    const std::string message = support::AsOrdinaryUser(test.folder(), [&] {
        std::filesystem::permissions(test.Path("lib"), std::filesystem::perms(0555));
        std::filesystem::permissions(test.Path("."), std::filesystem::perms(0555));
        const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --check --quiet");
        std::filesystem::permissions(test.Path("."), std::filesystem::perms(0755));
        std::filesystem::permissions(test.Path("lib"), std::filesystem::perms(0755));
        return std::to_string(outcome.status) + " " + outcome.err;
    });
    EXPECT_EQ(message, "1 ");
}

TEST_F(BadInput, FileThatChangesBetweenReadingAndSaving) {
    // The bar asks for the time whenever a part is done. Its text tells how far the run is.
    StringSink out;
    StringSink err;
    StringSource in;
    Environment environment{.streams = {.in = in, .out = out, .err = err}};
    Streams& streams = environment.streams;
    streams.errIsTerminal = true;
    std::chrono::steady_clock::time_point now;
    bool changed = false;
    streams.clock = [&] {
        if (!changed && err.text.contains("numbering")) {
            test.Write("Main.bas", test.Read("Main.bas") + "' edited meanwhile\r\n");
            changed = true;
        }
        return now += std::chrono::seconds(1);
    };
    const std::string main = test.Read("Main.bas");
    const std::string stock = test.Read("lib/Stock.bas");
    const std::vector<std::string> arguments = {"insert", test.Path("Shop.vbp"), "--line-numbers"};
    EXPECT_EQ(cli::Run(arguments, environment), ExitStatus::Failed);
    EXPECT_TRUE(changed);
    EXPECT_THAT(err.text, HasSubstr("Main.bas: error: "));
    EXPECT_EQ(test.Read("lib/Stock.bas"), stock);
    EXPECT_EQ(test.Read("Main.bas"), main + "' edited meanwhile\r\n");
}

TEST_F(BadInput, OutputThatIsAFile) {
    test.Write("out", "");
    EXPECT_THAT(MessageOf("insert @Shop.vbp --line-numbers --quiet --output @out"), HasSubstr("DIR/out"));
}

TEST_F(BadInput, ProjectOfFiveThousandEntriesIsWorkedOn) {
    std::string project = "Name=\"Large\"\r\n";
    for (int i = 0; i < 5000; ++i) {
        const std::string name = "M" + std::to_string(i);
        project += "Module=" + name + "; " + name + ".bas\r\n";
        test.Write(name + ".bas", "Attribute VB_Name = \"" + name + "\"\r\n" + std::string(Code));
    }
    test.Write("Large.vbp", project);
    const Outcome outcome = test.Run("insert @Large.vbp --line-numbers --check");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("Would number 5000 procedures in 5000 files, 5000 lines.\n"));
    EXPECT_THAT(test.Run("insert @Large.vbp --line-numbers --check --component M500").out,
                HasSubstr("Would number 1 procedure in 1 file, 1 line.\n"));
}

}  // namespace
}  // namespace lintara::cli
