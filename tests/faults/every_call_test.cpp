// Every call that changes files, struck by every fault: what a save leaves can always be told and recovered.
#include "tests/faults/trial.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iostream>

#include <gtest/gtest.h>

namespace lintara::faults {
namespace {

struct Kind {
    std::string name = {};
    bool lasting = false;
};

const std::vector<Kind>& Kinds() {
    static const std::vector<Kind> kinds = {
        {"kill"},
        {"short"},
        {std::to_string(EINTR)},
        {std::to_string(EIO)},
        {std::to_string(ENOSPC)},
        {std::to_string(EIO), true},
        {std::to_string(ENOSPC), true},
    };
    return kinds;
}

struct Scenario {
    std::string name = {};
    std::vector<Words> before = {};
    Words command = {};  // the project is its last word
    std::string lacks = {};
    long stride = 3;        // between the calls that are struck where not all are
    std::size_t files = 0;  // of a made-up project; 0: the small one
};

std::ostream& operator<<(std::ostream& stream, const Scenario& scenario) {
    return stream << scenario.name;
}

const std::vector<Scenario>& Scenarios() {
    static const Words number = {"insert", "--line-numbers", "@p/p.vbp"};
    static const Words numberMany = {"insert", "--line-numbers", "@p/Generated.vbp"};
    static const std::vector<Scenario> scenarios = {
        {.name = "Insert",
         .command = {"insert", "--error-handlers", "--line-numbers", "@p/p.vbp"},
         .stride = 1},
        {.name = "Remove", .before = {number}, .command = {"remove", "--line-numbers", "@p/p.vbp"}},
        {.name = "CustomInsert",
         .command = {"custom", "insert", "--id", "7", "--code", "@block.txt", "@p/p.vbp"}},
        {.name = "Undo", .before = {number}, .command = {"undo", "@p/p.vbp"}},
        {.name = "WithBackups", .command = {"insert", "--line-numbers", "--backup", ".bak", "@p/p.vbp"}},
        {.name = "WithoutExchange", .command = number, .lacks = "exchange", .stride = 2},
        {.name = "WithoutExchangeAndLinks", .command = number, .lacks = "exchange,link", .stride = 2},
        {.name = "ManyFiles", .command = numberMany, .stride = 41, .files = 40},
    };
    return scenarios;
}

long StrideOf(const Scenario& scenario) {
    return TakesAll() ? 1 : IsSanitized() ? scenario.stride * 10 : scenario.stride;
}

class EveryCall : public testing::TestWithParam<Scenario> {};

TEST_P(EveryCall, LeavesTheProjectWhollyOldOrWhollyNew) {
    const Scenario& scenario = GetParam();
    const FaultFolder folder;
    if (scenario.files > 0) {
        WriteManyFiles(folder, scenario.files);
    } else {
        WriteSmallProject(folder);
    }
    Trial trial(folder, scenario.before, scenario.command, scenario.lacks);
    const auto all = static_cast<long>(trial.calls().size());
    const auto writes = std::ranges::count_if(
        trial.calls(), [](const std::string& call) { return call.starts_with("write "); });
    const long stride = StrideOf(scenario);
    long begin = 0;
    for (const Kind& kind : Kinds()) {
        // Each kind begins at another call, so that every call is struck by some.
        for (long at = 1 + begin % stride; at <= (kind.name == "short" ? writes : all); at += stride) {
            trial.Strike({.at = at, .kind = kind.name, .lasting = kind.lasting});
        }
        begin += 1 + stride / static_cast<long>(Kinds().size());
    }
    trial.End();
    std::cout << scenario.name << ": " << all << " calls; " << trial.tally().ToString() << "\n";
    RecordProperty("figures", trial.tally().ToString());
    EXPECT_GT(trial.tally().struck, 0);
}

INSTANTIATE_TEST_SUITE_P(Saves, EveryCall, testing::ValuesIn(Scenarios()),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace lintara::faults
