// Numbers in, numbers out, over bodies made up at random from what line numbers care about.

#include "tests/support/random.h"
#include "tests/support/scripted_module.h"
#include "transform/line_numbers.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using support::ScriptedModule;

// No numbers, no more than six blanks on a blank line or behind a label: what removal would take for its own.
constexpr std::array<std::string_view, 24> Lines = {
    "x = 1",
    "    x = 1",
    "            deep = 1",
    "    Select Case x",
    "Select Case y _",
    "        Case 1",
    "    Call Foo(1, _",
    "        2, _",
    "        3)",
    "",
    "   ",
    "      ",
    "' comment",
    "'TODO:comment",
    "hErr:",
    "here: x = 1",
    "x=1:y=2",
    ": z",
    "    s = \"1: 2\"",
    "_",
    "\tx = 1",
    "    On Error GoTo hErr: Resume",
    "       ' exactly seven blanks",
    "    s = \"\u00e4\u20ac\"",
};

std::string RandomBody(support::Random& random) {
    std::string body;
    for (std::size_t lines = random.Below(40); lines > 0; --lines) {
        body += random.Pick(Lines);
        body += '\n';
    }
    return body;
}

TEST(RandomRoundTripTest, RemovalFromBase10000RestoresWhateverStoodThere) {
    support::Random random(2003);
    int changed = 0;
    for (int round = 0; round < 2000; ++round) {
        const std::string body = RandomBody(random);
        ScriptedModule module(body);
        const Line end{static_cast<std::int32_t>(module.lines.size()) + 1};
        // All numbers have five digits and lie below the limit.
        const auto step = static_cast<std::int32_t>(random.Below(1000)) + 1;
        InsertLineNumbersInRange(module, Line{1}, end, 10000, step);
        changed += module.text() != body ? 1 : 0;
        RemoveLineNumbersInRange(module, Line{1}, end);
        ASSERT_EQ(module.text(), body);
    }
    EXPECT_GT(changed, 1800);
}

}  // namespace
}  // namespace lintara::transform
