// Numbers that follow from the line in the module.
#include "cli/edits/refusal.h"
#include "tests/cli/command_run.h"
#include "tests/cli/edited_module.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr NumberOptions byModule{.base = 3, .step = 7, .numbering = Numbering::Module};

struct ModuleNumberingCase {
    const char* name;
    const char* before;
    const char* after;
};

void PrintTo(const ModuleNumberingCase& c, std::ostream* out) {
    *out << c.name;
}

class ModuleNumbering : public testing::TestWithParam<ModuleNumberingCase> {};

TEST_P(ModuleNumbering, NamesTheLineAndIsRemovedWithoutLoss) {
    EditedModule module(GetParam().before);
    EXPECT_THAT(SkippedIn(module.Insert(byModule)), IsEmpty());
    EXPECT_EQ(module.Code(), GetParam().after);
    EXPECT_THAT(SkippedIn(module.Remove()), IsEmpty());
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

const ModuleNumberingCase moduleNumberingCases[] = {
    {"EveryProcedureGoesOn",
     "Option Explicit\n"
     "Sub A()\n"
     "    x = 1\n"
     "\n"
     "    y = 2\n"
     "End Sub\n"
     "Sub B( _\n"
     "  ByVal n)\n"
     "    z = 3\n"
     "End Sub\n",
     "Option Explicit\n"
     "Sub A()\n"
     "10003:     x = 1\n"
     "\n"
     "10005:     y = 2\n"
     "End Sub\n"
     "Sub B( _\n"
     "  ByVal n)\n"
     "10009:     z = 3\n"
     "End Sub\n"},
    // The library tries Set, then Get, then Let for the first procedure of a property.
    {"PropertiesBeginAtTheBaseOfTheFirstThatIsFound",
     "Property Get P()\n"
     "    a = 1\n"
     "    b = 1\n"
     "End Property\n"
     "Property Let P(v)\n"
     "    c = 1\n"
     "End Property\n",
     "Property Get P()\n"
     "10002:     a = 1\n"
     "10003:     b = 1\n"
     "End Property\n"
     "Property Let P(v)\n"
     "10002:     c = 1\n"
     "End Property\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, ModuleNumbering, testing::ValuesIn(moduleNumberingCases),
                         [](const auto& c) { return std::string(c.param.name); });

TEST(ModuleNumberingGuards, SkipAJumpToANumberOfItsOwnLines) {
    EditedModule module("Sub A()\n    GoTo 10005\nEnd Sub\nSub B()\n    GoTo 10005\nEnd Sub\n");
    EXPECT_THAT(SkippedIn(module.Insert(byModule)), ElementsAre("jump-target B"));
    EXPECT_THAT(module.Code(), HasSubstr("10002:     GoTo 10005\nEnd Sub\nSub B()\n    GoTo 10005"));
}

TEST(ModuleNumberingGuards, RefuseNumbersOfSixDigits) {
    std::string code;
    for (int i = 0; i < 89990; ++i) {
        code += "'\n";
    }
    code += "Sub A()\n    a = 1\nEnd Sub\nSub B()\n    b = 1\n";
    for (int i = 0; i < 8; ++i) {
        code += "    c = 1\n";
    }
    EditedModule module(code + "End Sub\n");
    try {
        static_cast<void>(module.Insert(byModule));
        FAIL() << "nothing was refused";
    } catch (const Refusal& refusal) {
        EXPECT_THAT(refusal.what(), HasSubstr("--numbering module: line 90003 "));
        EXPECT_THAT(refusal.what(), HasSubstr("would get the number 100003"));
    }
}

TEST(ModuleNumberingGuards, RenumberWhatMovedSince) {
    EditedModule module("Sub A()\n10002: x = 1\n10009: y = 1\nEnd Sub\n");
    NumberOptions again = byModule;
    again.renumber = true;
    EXPECT_THAT(EditedIn(module.Insert(again)), ElementsAre("A"));
    EXPECT_EQ(module.Code(), "Sub A()\n10002: x = 1\n10003: y = 1\nEnd Sub\n");
}

TEST(ModuleNumberingExactly, BeginsAtTheFirstLineToo) {
    EditedModule module("Option Explicit\nSub A()\n    x = 1\nEnd Sub\n");
    static_cast<void>(module.Insert(byModule, true));
    EXPECT_EQ(module.Code(), "Option Explicit\nSub A()\n10003:     x = 1\nEnd Sub\n");
}

TEST(ModuleNumberingOption, IsAnOptionOfTheCommandAndTheProjectFile) {
    CommandTest test;
    test.WriteShop();
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers --numbering module -o @out").status, 0);
    EXPECT_THAT(test.Read("out/Main.bas"), HasSubstr("10005:     count = 1\r\n10006:     Sell count\r\n"));
    test.Write(".lintara.toml", "line-numbers = true\nnumbering = \"module\"\nbase = 20000\nstep = 3\n");
    EXPECT_EQ(test.Run("insert @Shop.vbp").status, 0);
    EXPECT_EQ(test.Read("Main.bas"), test.Read("out/Main.bas"));
}

TEST(ModuleNumberingOption, GoesWithNeitherBaseNorStepOnTheCommandLine) {
    CommandTest test;
    test.WriteShop();
    for (const char* option : {"--base 20000", "--step 5"}) {
        const Outcome outcome =
            test.Run("insert @Shop.vbp --line-numbers --numbering module " + std::string(option));
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, HasSubstr(std::string(option).substr(0, 6) +
                                           ": with --numbering module every number follows from its line"));
    }
    EXPECT_THAT(test.Run("insert @Shop.vbp --line-numbers --numbering file").err,
                HasSubstr("--numbering: 'file' is neither procedure nor module"));
}

// The Set procedure stands last, and handlers above it move it.
TEST(ModuleNumberingOption, CountsTheLinesOfHandlersThatCameLater) {
    CommandTest test;
    test.Write("a.bas",
               "Property Get P()\n    a = 1\nEnd Property\nSub B()\n    b = 1\nEnd Sub\n"
               "Property Set P(v)\n    c = 1\nEnd Property\n");
    ASSERT_EQ(test.Run("insert @a.bas --error-handlers --line-numbers --numbering module").status, 0);
    const std::string code = test.Read("a.bas");
    const std::size_t at = code.rfind("    c = 1");
    const auto line = 1 + std::count(code.begin(), code.begin() + static_cast<std::ptrdiff_t>(at), '\n');
    EXPECT_EQ(code.substr(at - 7, 7), std::to_string(10000 + line) + ": ");
}

}  // namespace
}  // namespace lintara::cli
