// Numbering all procedures of one module of 4,000 to 64,000 lines. The time per line must not grow with the
// module: the complexity report says O(N) when all is well. Items are lines.

#include "bench/project_walk.h"
#include "tests/support/project_generator.h"
#include "workspace/workspace.h"

#include <cstdint>
#include <string>

#include <benchmark/benchmark.h>

namespace lintara::bench {
namespace {

void NumberModule(benchmark::State& state, double propertyShare) {
    constexpr std::size_t linesOfAProcedure = 19;
    const auto lines = static_cast<std::size_t>(state.range(0));
    const std::string bytes = support::GenerateModule(
        {.lines = lines, .procedures = lines / linesOfAProcedure, .propertyShare = propertyShare});
    for (auto _ : state) {
        state.PauseTiming();
        auto opened = WorkspaceWith(bytes, bytes.find("Option Explicit"));
        ProjectWalk walk(*opened);
        state.ResumeTiming();
        walk.InsertNumbers();
        state.counters["calls"] = static_cast<double>(walk.names());
        state.PauseTiming();
        opened.reset();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

void Sizes(benchmark::internal::Benchmark* registered) {
    for (const std::int64_t lines : {4000, 8000, 16000, 32000, 64000}) {
        registered->Arg(lines);
    }
    registered->Unit(benchmark::kMillisecond)->Complexity();
}

BENCHMARK_CAPTURE(NumberModule, FewProperties, 0.1)->Apply(Sizes);
BENCHMARK_CAPTURE(NumberModule, ManyProperties, 0.9)->Apply(Sizes);

}  // namespace
}  // namespace lintara::bench
