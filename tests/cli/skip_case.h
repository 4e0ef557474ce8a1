// A procedure that an edit leaves alone: the code, what is told of it, and where.
#pragma once

#include "tests/cli/edited_module.h"

#include <ostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {

struct SkipCase {
    const char* name;
    const char* code;
    const char* skipped;
    int line;
};

inline void PrintTo(const SkipCase& c, std::ostream* out) {
    *out << c.name;
}

// After an edit of `module`, which held the code of the case.
inline void ExpectSkipped(const SkipCase& c, const ComponentReport& report, const EditedModule& module) {
    EXPECT_THAT(EditedIn(report), testing::IsEmpty());
    EXPECT_THAT(SkippedIn(report), testing::ElementsAre(c.skipped));
    ASSERT_FALSE(report.skipped.empty());
    EXPECT_EQ(report.skipped[0].at, Line(c.line)) << report.skipped[0].message;
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

}  // namespace lintara::cli
