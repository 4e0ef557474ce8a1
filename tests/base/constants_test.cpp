#include "base/constants.h"

#include "base/text.h"

#include <gtest/gtest.h>

namespace lintara::constants {
namespace {

// Users' projects and settings hold these texts. They are spelled out once more here, so that a change of one
// is noticed as what it is.
TEST(ConstantsTest, MarkerLinesAreThoseInUsersCode) {
    EXPECT_EQ(ErrorHandlerBegin, u"' TWErrorHandler begin - please do not modify or remove this line");
    EXPECT_EQ(CustomCodeBegin, u"' TWCustomCode begin - please do not modify or remove this line");
    EXPECT_EQ(CustomCodeEnd, u"' TWCustomCode end - please do not modify or remove this line");
}

TEST(ConstantsTest, PlaceholdersStandInTheOrderOfTheirReplacement) {
    constexpr std::array<TextView, 9> Expected = {u"{ProjectName}", u"{ComponentName}", u"{MemberName}",
                                                  u"{ControlName}", u"{ComputerName}",  u"{UserName}",
                                                  u"{Date}",        u"{Time}",          u"{MemberType}"};
    EXPECT_EQ(Placeholders, Expected);
}

TEST(ConstantsTest, SettingsAreThoseThatUsersHaveStored) {
    EXPECT_EQ(SettingsApplication, u"Tarnwick");
    EXPECT_EQ(CodeAutomationSection, u"CodeAutomation");
    EXPECT_EQ(AssistantsSection, u"Assistants");
    EXPECT_EQ(InsertLineNumbersKey, u"InsertLN");
    EXPECT_EQ(InsertErrorHandlersKey, u"InsertEH");
    EXPECT_EQ(LineNumberBaseKey, u"LNBase");
    EXPECT_EQ(LineNumberStepKey, u"LNStep");
    EXPECT_EQ(ErrorHandlerLabelKey, u"EHLabel");
    EXPECT_EQ(ErrorHandlerCodeKey, u"EHCode");
    EXPECT_EQ(LastCustomCodeKey, u"LastCustomCode");
    EXPECT_EQ(UseDelimitersKey, u"UseDelimiters");
    EXPECT_EQ(CodeDbPathKey, u"CodeDbPath");
    EXPECT_EQ(DefaultLineNumberBase, u"10000");
    EXPECT_EQ(DefaultLineNumberStep, u"5");
    EXPECT_EQ(DefaultErrorHandlerLabel, u"hErr");
}

TEST(ConstantsTest, TheKeysOfTheRemoveDialogAreCrossed) {
    EXPECT_EQ(RemoveErrorHandlersKey, u"RemoveLN");
    EXPECT_EQ(RemoveLineNumbersKey, u"RemoveEH");
}

TEST(ConstantsTest, TheCodeDatabaseKeepsItsNames) {
    EXPECT_EQ(CodeDatabaseFile, u"\\Assistants.mdb");
    EXPECT_EQ(BuffersTable, u"CPBuffers");
    EXPECT_EQ(BuffersIndex, u"Key");
    EXPECT_EQ(BufferKeyField, u"Key");
    EXPECT_EQ(BufferCodeField, u"Code");
}

}  // namespace
}  // namespace lintara::constants
