// Compares an operation with a plain statement of it on a host that misbehaves.
#pragma once

#include "tests/support/faulty_host.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::support {

// Runs `plain`, a plain statement of what is to come out, and `use` as WithEveryCallFaulty does, once for
// each way in which a call may go wrong. Whichever call it is, `use` leaves the text that `plain` leaves, and
// no handle. Both get the faulty services object. `fewestRuns`: fewer would not have reached all the calls.
template <class Make, class Plain, class Use>
void ExpectAsPlainWithEveryCallFaulty(Make make, Plain plain, Use use, std::size_t fewestRuns) {
    for (const Fault fault : {Fault::Fails, Fault::Empty}) {
        std::vector<std::string> expected;
        WithEveryCallFaulty(fault, make, plain, [&](auto& subject, const FaultPlan&, std::string_view) {
            expected.push_back(subject.text());
        });
        std::size_t run = 0;
        WithEveryCallFaulty(fault, make, use,
                            [&](auto& subject, const FaultPlan& plan, std::string_view faulty) {
                                ASSERT_LT(run, expected.size()) << faulty;
                                EXPECT_EQ(subject.text(), expected[run]) << faulty << ", run " << run;
                                EXPECT_EQ(subject.globals()->liveHandles(), 0U) << faulty;
                                EXPECT_EQ(plan.liveHandles, 1U) << faulty;
                                ++run;
                            });
        EXPECT_EQ(run, expected.size());
        EXPECT_GE(run, fewestRuns);
    }
}

}  // namespace lintara::support
