// Requests per second of the automation endpoint, in process: what a line costs from its bytes to the bytes
// of its answer, and which share of that is not the work itself but JSON and the protocol. The module has one
// procedure of 100 lines. A pipe and a second process cost extra.

#include "cli/serve/endpoint.h"
#include "cli/serve/session.h"

#include <chrono>
#include <stdexcept>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

namespace lintara::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int ProcedureLines = 100;

// Keeps the last answer.
class LastAnswer : public cli::Sink {
  public:
    std::string text;

  protected:
    bool DoWrite(std::string_view bytes) override {
        text = bytes;
        return true;
    }
};

Text ModuleText() {
    Text text = u"Public Sub Work(ByVal value As Long)\r\n";
    for (int i = 2; i < ProcedureLines; ++i) {
        text += u"    total = total + Rate(value) * value\r\n";
    }
    return text + u"End Sub";
}

class Server {
  public:
    Server() {
        auto project = std::make_unique<workspace::Project>(u"P", std::filesystem::path());
        auto component = std::make_unique<workspace::Component>();
        component->name = u"M";
        component->module = workspace::Module::FromText(ModuleText());
        module_ = component->module.get();
        project->Add(std::move(component));
        session_.workspace().Add(std::move(project));
    }

    [[nodiscard]] workspace::Module& module() { return *module_; }
    [[nodiscard]] Lintara& lintara() { return session_.lintara(); }

    void Serve(std::string_view line) {
        endpoint_.Serve(line);
        benchmark::DoNotOptimize(answer_.text);
    }
    [[nodiscard]] const std::string& answer() const { return answer_.text; }

  private:
    cli::Session session_ = cli::Session::Isolated({}, nullptr);
    LastAnswer answer_;
    cli::Endpoint endpoint_{session_, answer_};
    workspace::Module* module_ = nullptr;
};

template <class Work>
double SecondsOf(Work&& work) {
    const auto begun = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - begun).count();
}

// Times the request `line` against `work`, which does the same without the endpoint; `restore` undoes either.
template <class Work, class Restore>
void Compare(benchmark::State& state, Server& server, std::string_view line, Work&& work, Restore&& restore) {
    double requests = 0;
    double alone = 0;
    for (auto _ : state) {
        const double seconds = SecondsOf([&] { server.Serve(line); });
        restore();
        alone += SecondsOf(work);
        restore();
        state.SetIterationTime(seconds);
        requests += seconds;
    }
    if (!server.answer().contains("\"result\"")) {
        throw std::runtime_error("the request failed: " + server.answer());
    }
    state.counters["requests"] = benchmark::Counter(static_cast<double>(state.iterations()) / requests);
    state.counters["json_percent"] = 100 * (1 - alone / requests);
}

void Lines(benchmark::State& state) {
    Server server;
    Compare(
        state, server,
        R"({"jsonrpc":"2.0","id":1,"method":"codemodule.Lines","params":{"project":"P","component":"M",)"
        R"("startLine":1,"count":100}})",
        [&] { benchmark::DoNotOptimize(server.module().Lines(Line{1}, ProcedureLines)); }, [] {});
}

void LineNumbersInserter(benchmark::State& state) {
    Server server;
    Compare(
        state, server,
        R"({"jsonrpc":"2.0","id":1,"method":"lintara.LineNumbersInserter","params":{"sProject":"P",)"
        R"("sComponent":"M","sMember":"Work","iLNBase":10000,"iLNStep":5}})",
        [&] { server.lintara().LineNumbersInserter(u"P", u"M", u"Work", 10000, 5); },
        [&] { server.lintara().LineNumbersRemover(u"P", u"M", u"Work"); });
}

BENCHMARK(Lines)->UseManualTime();
BENCHMARK(LineNumbersInserter)->UseManualTime();

}  // namespace
}  // namespace lintara::bench
