#include "base/constants.h"

#include "base/text.h"

#include <cstddef>
#include <vector>

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

// The letter case differs on purpose: the IDE rewrites the keyword, and what is recognised is its form.
TEST(ConstantsTest, StatementsOnErrorsAreWrittenInOneFormAndRecognisedInAnother) {
    EXPECT_EQ(OnErrorGoto, u"On Error Goto ");
    EXPECT_EQ(CommittedOnErrorGoTo, u"On Error GoTo ");
    EXPECT_EQ(NoErrorHandler, u"0");
}

TEST(ConstantsTest, PlaceholdersAreThoseInUsersTemplates) {
    EXPECT_EQ(ProjectNamePlaceholder, u"{ProjectName}");
    EXPECT_EQ(ComponentNamePlaceholder, u"{ComponentName}");
    EXPECT_EQ(MemberNamePlaceholder, u"{MemberName}");
    EXPECT_EQ(ControlNamePlaceholder, u"{ControlName}");
    EXPECT_EQ(ComputerNamePlaceholder, u"{ComputerName}");
    EXPECT_EQ(UserNamePlaceholder, u"{UserName}");
    EXPECT_EQ(DatePlaceholder, u"{Date}");
    EXPECT_EQ(TimePlaceholder, u"{Time}");
    EXPECT_EQ(MemberTypePlaceholder, u"{MemberType}");
}

struct IndentedLine {
    std::size_t blanks;
    TextView code;
};

TEST(ConstantsTest, TheDefaultErrorHandlerIsTheOneThatUsersStartFrom) {
    const std::vector<IndentedLine> expected = {
        {4, u"Select Case MsgBox(\"Error \" & Err.Number & \": \" & Err.Description & vbCrLf & _"},
        {22, u"\"in {ProjectName}.{ComponentName}.{MemberName}.\" & vbCrLf & _"},
        {22, u"\"The error occured at line: \" & Erl, _"},
        {22, u"vbAbortRetryIgnore + vbCritical, \"Error\")"},
        {8, u"Case vbAbort"},
        {12, u"Screen.MousePointer = vbDefault"},
        {12, u"Exit {MemberType}"},
        {8, u"Case vbRetry"},
        {12, u"Resume"},
        {8, u"Case vbIgnore"},
        {12, u"Resume Next"},
        {4, u"End Select"},
    };
    Text text;
    for (const IndentedLine& line : expected) {
        text.append(line.blanks, u' ').append(line.code).append(u"\r\n");
    }
    EXPECT_EQ(text.size(), 500U);
    EXPECT_EQ(DefaultErrorHandlerCode, text);
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
