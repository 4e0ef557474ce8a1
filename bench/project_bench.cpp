// A project of 450,000 lines in 600 files: reading it, indexing its procedures, editing all of them, and
// writing it back. Items are lines of the project as it is on the disk.

#include "bench/project_walk.h"
#include "tests/support/project_generator.h"
#include "workspace/open.h"
#include "workspace/save.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

#include <benchmark/benchmark.h>

namespace lintara::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t projectLines = 450'000;

// The generated project on disk, for as long as the program runs.
class ProjectOnDisk {
  public:
    ProjectOnDisk()
        : folder_(fs::temp_directory_path() / ("lintara-bench-" + std::to_string(getpid()))),
          project_(support::GenerateProject({.files = 600, .lines = projectLines})) {
        Restore();
    }
    ~ProjectOnDisk() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    ProjectOnDisk(const ProjectOnDisk&) = delete;
    ProjectOnDisk& operator=(const ProjectOnDisk&) = delete;

    void Restore() const { support::WriteProject(project_, folder_); }
    [[nodiscard]] fs::path path() const { return folder_ / project_.projectFile; }
    [[nodiscard]] std::int64_t bytes() const { return static_cast<std::int64_t>(project_.bytes()); }

  private:
    fs::path folder_;
    support::GeneratedProject project_;
};

const ProjectOnDisk& Disk() {
    static const ProjectOnDisk disk;
    return disk;
}

bool Load(workspace::Workspace& opened, benchmark::State& state) {
    const auto result = workspace::Open(opened, Disk().path(), {});
    if (!result) {
        state.SkipWithError(result.error().front().ToString().c_str());
    }
    return result.has_value();
}

void CountWork(benchmark::State& state) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(projectLines));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * Disk().bytes());
}

void LoadProject(benchmark::State& state) {
    for (auto _ : state) {
        workspace::Workspace opened;
        if (!Load(opened, state)) {
            return;
        }
    }
    CountWork(state);
}

// Where the shown code begins in the file's bytes.
std::size_t CodeBegin(const workspace::Module& module) {
    std::size_t at = 0;
    for (std::int64_t line = module.FileLine(Line{1}); line > 1; --line) {
        at = module.originalBytes().find('\n', at) + 1;
    }
    return at;
}

void IndexProject(benchmark::State& state) {
    workspace::Workspace opened;
    if (!Load(opened, state)) {
        return;
    }
    const auto& components = opened.projects().front()->components();
    for (auto _ : state) {
        std::size_t procedures = 0;
        for (const auto& component : components) {
            state.PauseTiming();
            const workspace::Module& module = *component->module;
            std::string bytes = module.originalBytes();
            const std::size_t codeBegin = CodeBegin(module);
            state.ResumeTiming();
            const workspace::Module again(std::move(bytes), codeBegin, *workspace::FindEncoding("1252"));
            procedures += again.Procedures().size();
        }
        benchmark::DoNotOptimize(procedures);
        state.counters["procedures"] = static_cast<double>(procedures);
    }
    CountWork(state);
}

using Step = void (ProjectWalk::*)();

// One walk over the project, after another one that is not measured, if `before` is given.
void EditProject(benchmark::State& state, Step step, Step before) {
    for (auto _ : state) {
        state.PauseTiming();
        auto opened = std::make_unique<workspace::Workspace>();
        if (!Load(*opened, state)) {
            return;
        }
        ProjectWalk walk(*opened);
        if (before != nullptr) {
            (walk.*before)();
        }
        state.ResumeTiming();
        (walk.*step)();
        state.counters["calls"] = static_cast<double>(walk.names());
        state.PauseTiming();
        opened.reset();
        state.ResumeTiming();
    }
    CountWork(state);
}

void SaveProject(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Disk().Restore();
        auto opened = std::make_unique<workspace::Workspace>();
        if (!Load(*opened, state)) {
            return;
        }
        ProjectWalk(*opened).InsertBoth();
        state.ResumeTiming();
        const auto saved = workspace::Save(*opened, {});
        state.PauseTiming();
        if (!saved) {
            state.SkipWithError(saved.error().front().ToString().c_str());
            return;
        }
        state.counters["files"] = static_cast<double>(saved->size());
        opened.reset();
        state.ResumeTiming();
    }
    Disk().Restore();
    CountWork(state);
}

BENCHMARK(LoadProject)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(IndexProject)->Unit(benchmark::kMillisecond)->UseRealTime();
#define LINTARA_BENCH_WALK(name, step, before) \
    BENCHMARK_CAPTURE(EditProject, name, step, before)->Unit(benchmark::kMillisecond)->UseRealTime()

LINTARA_BENCH_WALK(InsertNumbers, &ProjectWalk::InsertNumbers, nullptr);
LINTARA_BENCH_WALK(InsertBoth, &ProjectWalk::InsertBoth, nullptr);
LINTARA_BENCH_WALK(RemoveBoth, &ProjectWalk::RemoveBoth, &ProjectWalk::InsertBoth);
BENCHMARK(SaveProject)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

}  // namespace
}  // namespace lintara::bench
