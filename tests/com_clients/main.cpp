// Runs the tests of the transformers over COM, without those that need what no client of the component server
// can give it.
#include "tests/com_clients/registry_sandbox.h"

#include <string>

#include <gtest/gtest.h>

namespace {

// The date and the time are the machine's own; these tests set them.
constexpr const char* TestsOfAnotherClock =
    "CodeEditsTest.AnErrorHandlerGoesInAndOut:CodeEditsTest.CustomCodeGoesInAndOut:"
    "FacadeTemplatesTest.ATemplateIsExpandedForAMemberByName:"
    "FacadeTemplatesTest.ATemplateIsExpandedForTheMemberAtTheCaret:"
    "FacadeWithoutAClockTest.DateAndTimeStayInTheTemplate:"
    "ParsePseudoCodeTest.AClockThatFailsLeavesDateAndTime:"
    "ParsePseudoCodeTest.DateAndTimeAreThoseOfOneMoment:"
    "ParsePseudoCodeTest.DateAndTimeFailEachOnItsOwn:"
    "ParsePseudoCodeTest.DatesComeBeforeTimesAndTimesBeforeKinds:"
    "ParsePseudoCodeTest.EveryPlaceholderBecomesItsValueAtTheCaret:"
    "ParsePseudoCodeTest.EveryPlaceholderBecomesItsValueForAMemberByName:"
    "ParsePseudoCodeTest.TheRowsAreReplacedInTheirOrder:"
    "ParsePseudoCodeTest.WithoutAClockDateAndTimeStay:"
    "ParsePseudoCodeTest.WithoutAComponentNameItsPlaceholdersStay:"
    "ParsePseudoCodeTest.WithoutAMemberNameItsPlaceholdersStay:";
// An exception ends an operation in the same program; over COM it is a call that fails, and the next one
// runs.
constexpr const char* TestsOfExceptions =
    "FacadeTemplatesTest.AnExceptionOfTheHostLeavesAnEmptyResultAndTheDefaultPointer";

void LeaveOutWhatNeedsTheSameProgram() {
    std::string& filter = testing::GTEST_FLAG(filter);
    filter += filter.find('-') == std::string::npos ? "-" : ":";
    filter += std::string(TestsOfAnotherClock) + TestsOfExceptions;
}

}  // namespace

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    LeaveOutWhatNeedsTheSameProgram();
    const lintara::support::RegistrySandbox sandbox;
    return RUN_ALL_TESTS();
}
