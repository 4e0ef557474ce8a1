// Components are edited side by side; what is told of them does not depend on which is done first.
#include "tests/cli/command_run.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;

constexpr int Modules = 24;

std::string NameOf(int index) {
    return "M" + std::to_string(100 + index);
}

std::size_t Count(const std::string& text, const std::string& sought) {
    std::size_t count = 0;
    for (std::size_t at = text.find(sought); at != std::string::npos; at = text.find(sought, at + 1)) {
        ++count;
    }
    return count;
}

class ParallelRemoval : public testing::Test {
  protected:
    // Modules with handlers of a template, but for a typed line in the last one.
    void SetUp() override {
        test.Write("handler.txt", "    Report \"{MemberName}\"\n");
        for (int i = 0; i < Modules; ++i) {
            test.Write("p/" + NameOf(i) + ".bas", "Attribute VB_Name = \"" + NameOf(i) +
                                                      "\"\r\nSub Go()\r\n    x\r\nEnd Sub\r\nSub Halt()\r\n"
                                                      "    y\r\nEnd Sub\r\n");
        }
        ASSERT_EQ(test.Run("insert @p --error-handlers --template @handler.txt").status, 0);
        const std::string last = "p/" + NameOf(Modules - 1) + ".bas";
        test.Write(last,
                   Replaced(test.Read(last), "    Report \"Halt\"", "    Report \"Halt\"\r\n    typed"));
    }

    CommandTest test;
};

TEST_F(ParallelRemoval, TellsOfAnotherTemplateOnceAtTheFirstOfItsHandlers) {
    for (int run = 0; run < 5; ++run) {
        const Outcome check = test.Run("remove @p --error-handlers --check");
        EXPECT_EQ(check.status, 1);
        EXPECT_EQ(Count(check.err, "[other-template]"), 1U);
        EXPECT_EQ(Count(check.err, "[handler-edited]"), 1U);
        EXPECT_THAT(check.err,
                    HasSubstr(std::to_string(2 * Modules - 1) + " error handlers of the project are alike"));
        EXPECT_LT(check.err.find(NameOf(0) + ".bas:"), check.err.find("[other-template]"));
        EXPECT_LT(check.err.find(NameOf(Modules - 1) + ".bas:"), check.err.find("[handler-edited]"));
        EXPECT_EQ(Count(check.err, "\n"), 2U) << check.err;
    }
}

TEST_F(ParallelRemoval, CountsHandlersOutsideItsScope) {
    const Outcome check = test.Run("remove @p --error-handlers --component M100 --check");
    EXPECT_THAT(check.err,
                HasSubstr(std::to_string(2 * Modules - 1) + " error handlers of the project are alike"));
}

TEST_F(ParallelRemoval, TakesAllHandlersOutAndCanBeUndone) {
    const auto handled = test.Files();
    ASSERT_EQ(test.Run("remove @p --error-handlers").status, 0);
    for (const auto& [name, bytes] : test.Files()) {
        EXPECT_EQ(Count(bytes, "TWErrorHandler"), 0U) << name;
        EXPECT_EQ(Count(bytes, "typed"), 0U) << name;
    }
    ASSERT_EQ(test.Run("undo @p").status, 0);
    EXPECT_EQ(test.Files(), handled);
}

TEST_F(ParallelRemoval, RefusesWithNothingChangedWhenOneComponentCannotBeEncoded) {
    test.Write("other.txt", "    Report \"\xD0\x96\"\n");
    for (int i = 0; i < Modules; ++i) {
        test.Write("q/" + NameOf(i) + ".bas", "Sub Go()\r\n    x\r\nEnd Sub\r\n");
    }
    const auto files = test.Files();
    const Outcome refused = test.Run("insert @q --error-handlers --template @other.txt");
    EXPECT_NE(refused.status, 0);
    EXPECT_THAT(refused.err, HasSubstr("cannot be written in the file's code page"));
    EXPECT_EQ(test.Files(), files);
}

}  // namespace
}  // namespace lintara::cli
