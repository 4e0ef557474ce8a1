#include "cli/output/progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

// A run whose time the test tells.
struct Waiting {
    StringSource in;
    StringSink out;
    StringSink err;
    std::chrono::steady_clock::time_point now{};
    Streams streams{.in = in, .out = out, .err = err, .errIsTerminal = true, .clock = [this] { return now; }};
};

TEST(Progress, IsNotShownInTheFirstHalfSecond) {
    Waiting run;
    Progress progress(run.streams, true);
    run.now += 499ms;
    progress.Update("reading", 1, 2);
    EXPECT_EQ(run.err.text, "");
}

TEST(Progress, IsShownAfterHalfASecondAndWipedAway) {
    Waiting run;
    {
        Progress progress(run.streams, true);
        run.now += 500ms;
        progress.Update("reading", 1, 2);
        EXPECT_EQ(run.err.text, "\r[###############               ]  50% reading\x1b[K");
        run.err.text.clear();
        run.now += 10ms;
        progress.Update("reading", 2, 2);
        EXPECT_EQ(run.err.text, "") << "drawn more often than people can see";
        run.now += 50ms;
        progress.Update("saving", 5, 2);
        EXPECT_THAT(run.err.text, HasSubstr("100% saving"));
        run.err.text.clear();
    }
    EXPECT_EQ(run.err.text, "\r\x1b[K");
}

TEST(Progress, IsShownOnTerminalsOnly) {
    Waiting run;
    run.streams.errIsTerminal = false;
    Progress progress(run.streams, true);
    run.now += 5s;
    progress.Update("reading", 1, 2);
    progress.Clear();
    EXPECT_EQ(run.err.text, "");
}

TEST(Progress, IsNotShownWhenDisabled) {
    Waiting run;
    Progress progress(run.streams, false);
    run.now += 5s;
    progress.Update("reading", 1, 2);
    EXPECT_EQ(run.err.text, "");
}

TEST(Progress, HasNoPartsToShowOfNothing) {
    Waiting run;
    Progress progress(run.streams, true);
    run.now += 5s;
    progress.Update("reading", 0, 0);
    EXPECT_EQ(run.err.text, "");
}

}  // namespace
}  // namespace lintara::cli
