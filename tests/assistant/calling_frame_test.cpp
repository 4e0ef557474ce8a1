#include "assistant/calling_frame.h"

#include "base/text.h"

#include <cstdint>
#include <new>

#include <gtest/gtest.h>

namespace lintara::assistant {
namespace {

TEST(CallingFrameTest, AnExceptionLeavesWhatWasComputedByThen) {
    const auto result = Compute<Text>([](Text& text) {
        text = u"so far";
        throw std::bad_alloc();
    });
    EXPECT_EQ(result, u"so far");
}

TEST(CallingFrameTest, ResultsAreEmptyAtFirst) {
    EXPECT_EQ(Compute<Text>([](Text&) {}), u"");
    EXPECT_EQ(Compute<std::int32_t>([](std::int32_t&) { throw 1; }), 0);
}

TEST(CallingFrameTest, AnExceptionStopsWorkDoneForItsEffect) {
    int steps = 0;
    Perform([&] {
        ++steps;
        throw std::bad_alloc();
    });
    EXPECT_EQ(steps, 1);
}

}  // namespace
}  // namespace lintara::assistant
