// Error handlers in all procedures of one module of 2,000 to 64,000 lines, put in and taken out, with line
// numbers and without. The time per line must not grow with the module, whatever its lines look like: the
// complexity report says O(N) when all is well. Items are lines.

#include "bench/project_walk.h"

#include <cstdint>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

namespace lintara::bench {
namespace {

constexpr TextView OtherLabel = u"Other";

// What the procedures of a module look like.
struct Shape {
    int propertiesOfTen = 0;         // of ten procedures so many are Get and Let of a property
    std::string_view bodyLine = {};  // stands in every procedure, or in one of `bodyLineEvery`
    std::size_t bodyLineEvery = 1;
};

class ModuleWriter {
  public:
    explicit ModuleWriter(const Shape& shape) : shape_(shape) {}

    std::string Write(std::size_t lines) {
        while (lines_ < lines) {
            const std::string name = "Item" + std::to_string(procedures_);
            if (static_cast<int>(procedures_ % 10) < shape_.propertiesOfTen) {
                WriteProcedure("Property Get " + name + "() As Long", "Property");
                WriteProcedure("Property Let " + name + "(ByVal value As Long)", "Property");
            } else {
                WriteProcedure("Sub " + name + "(ByVal value As Long)", "Sub");
            }
        }
        return std::move(text_);
    }

    std::size_t lines() const { return lines_; }

  private:
    void WriteLine(std::string_view line) {
        text_ += line;
        text_ += "\r\n";
        ++lines_;
    }

    void WriteProcedure(const std::string& header, std::string_view kindWord) {
        constexpr int Statements = 12;
        WriteLine("Public " + header);
        if (!shape_.bodyLine.empty() && procedures_ % shape_.bodyLineEvery == 0) {
            WriteLine(shape_.bodyLine);
        }
        for (int i = 0; i < Statements; ++i) {
            WriteLine("    total = total + Rate(" + std::to_string(lines_) + ") * value");
        }
        WriteLine("End " + std::string(kindWord));
        WriteLine("");
        ++procedures_;
    }

    Shape shape_;
    std::string text_;
    std::size_t lines_ = 0;
    std::size_t procedures_ = 0;
};

enum class Part { InsertHandlers, RemoveHandlers, RemoveOthers, InsertBoth, RemoveBoth };

void EditModule(benchmark::State& state, const Shape& shape, Part part) {
    ModuleWriter writer(shape);
    const std::string bytes = writer.Write(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        auto opened = WorkspaceWith(bytes, 0);
        ProjectWalk walk(*opened);
        if (part == Part::RemoveBoth) {
            walk.InsertBoth();
        } else if (part == Part::RemoveHandlers || part == Part::RemoveOthers) {
            walk.InsertHandlers(part == Part::RemoveOthers ? OtherLabel : SavedLabel);
        }
        state.ResumeTiming();
        switch (part) {
            case Part::InsertHandlers:
                walk.InsertHandlers(SavedLabel);
                break;
            case Part::InsertBoth:
                walk.InsertBoth();
                break;
            case Part::RemoveBoth:
                walk.RemoveBoth();
                break;
            case Part::RemoveHandlers:
            case Part::RemoveOthers:
                walk.RemoveHandlers();
        }
        state.PauseTiming();
        opened.reset();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * writer.lines()));
}

void Sizes(benchmark::internal::Benchmark* registered) {
    registered->RangeMultiplier(2)->Range(2000, 64000)->Unit(benchmark::kMillisecond)->Complexity();
}

const Shape Subs{.propertiesOfTen = 1};
const Shape Properties{.propertiesOfTen = 9};
const Shape Handled{.propertiesOfTen = 5, .bodyLine = "    On Error GoTo hErr"};
const Shape HandledByOther{.propertiesOfTen = 5, .bodyLine = "    On Error GoTo Failed"};
const Shape Disabling{.propertiesOfTen = 5, .bodyLine = "    On Error GoTo 0"};
const Shape SeldomDisabling{.propertiesOfTen = 5, .bodyLine = "    On Error GoTo 0", .bodyLineEvery = 500};
const Shape Zeros{.propertiesOfTen = 5, .bodyLine = "    x = 0"};

#define LINTARA_BENCH_SHAPE(shape)                                                                    \
    BENCHMARK_CAPTURE(EditModule, shape##_InsertHandlers, shape, Part::InsertHandlers)->Apply(Sizes); \
    BENCHMARK_CAPTURE(EditModule, shape##_RemoveHandlers, shape, Part::RemoveHandlers)->Apply(Sizes); \
    BENCHMARK_CAPTURE(EditModule, shape##_RemoveOthers, shape, Part::RemoveOthers)->Apply(Sizes);     \
    BENCHMARK_CAPTURE(EditModule, shape##_InsertBoth, shape, Part::InsertBoth)->Apply(Sizes);         \
    BENCHMARK_CAPTURE(EditModule, shape##_RemoveBoth, shape, Part::RemoveBoth)->Apply(Sizes)

LINTARA_BENCH_SHAPE(Subs);
LINTARA_BENCH_SHAPE(Properties);
LINTARA_BENCH_SHAPE(Handled);
LINTARA_BENCH_SHAPE(HandledByOther);
LINTARA_BENCH_SHAPE(Disabling);
LINTARA_BENCH_SHAPE(SeldomDisabling);
LINTARA_BENCH_SHAPE(Zeros);

}  // namespace
}  // namespace lintara::bench
