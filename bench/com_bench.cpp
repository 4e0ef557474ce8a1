// What editing costs over COM: numbers a long procedure of a late-bound host through the component server,
// takes the numbers off again, and tells how often the host was called and how long it took, beside the same
// work without COM. Runs on Windows or under Wine; the argument is the number of lines, 10000 by default.
#include "com/lintara_idl.h"
#include "com/variant.h"
#include "hostmodel/globals.h"
#include "tests/com/component_library.h"
#include "tests/com/late_bound_host.h"
#include "tests/com/named_invoke.h"
#include "tests/support/code_fixture.h"
#include "transform/line_numbers.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace lintara;
using support::Lend;

constexpr std::int32_t Base = 1;
constexpr std::int32_t Step = 1;

std::string SourceOf(int lines) {
    std::string source = "Option Explicit\nSub Work()\n";
    for (int line = 0; line < lines; ++line) {
        source += "    x" + std::to_string(line) + " = x + 1\n";
    }
    return source + "End Sub";
}

double SecondsOf(const auto& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

struct Operation {
    const wchar_t* member;
    const char* shown;
    bool inserts;
};

void WithoutCom(hostmodel::Globals& globals, bool inserts) {
    if (inserts) {
        transform::LineNumbersInserter(globals, support::ProjectName, support::ModuleName, u"Work", Base,
                                       Step);
    } else {
        transform::LineNumbersRemover(globals, support::ProjectName, support::ModuleName, u"Work");
    }
}

HRESULT OverCom(IDispatch& lintara, const Operation& operation) {
    const com::Variant project(support::ProjectName);
    const com::Variant component(support::ModuleName);
    const com::Variant member(TextView(u"Work"));
    const com::Variant base(Base);
    const com::Variant step(Step);
    std::vector<VARIANTARG> arguments = {Lend(project), Lend(component), Lend(member)};
    if (operation.inserts) {
        arguments.insert(arguments.end(), {Lend(base), Lend(step)});
    }
    return support::InvokeByName(lintara, operation.member, DISPATCH_METHOD, arguments).code;
}

void Report(const Operation& operation, int lines, const support::LateBoundHost& host, double with,
            double without) {
    const auto calls = static_cast<double>(host.invokes);
    std::printf(
        "%s %d lines: %.0f calls, %.3f a line; %zu look-ups of names; %.1f ms, without COM %.1f ms: "
        "%.2f us more a call\n",
        operation.shown, lines, calls, calls / lines, host.nameLookups, with * 1e3, without * 1e3,
        (with - without) / calls * 1e6);
    for (const auto& [name, count] : host.callsByName) {
        std::printf("    %8zu  %s\n", count, name.c_str());
    }
}

}  // namespace

int main(int count, char** arguments) {
    const int lines = count > 1 ? std::atoi(arguments[1]) : 10000;
    const support::ComponentLibrary library;
    support::CodeFixture inProcess(SourceOf(lines));
    support::CodeFixture overCom(SourceOf(lines));
    for (const Operation& operation : {Operation{L"LineNumbersInserter", "numbering", true},
                                       {L"LineNumbersRemover", "removing from", false}}) {
        const double without = SecondsOf([&] { WithoutCom(*inProcess.globals(), operation.inserts); });
        const auto host = std::make_shared<support::LateBoundHost>();
        const auto lintara = library.Create<ILintara>(CLSID_Lintara);
        lintara->putref_oG(support::LateBoundGlobals(*overCom.globals(), host).get());
        HRESULT code = S_OK;
        const double with = SecondsOf([&] { code = OverCom(*lintara, operation); });
        if (code != S_OK || overCom.text() != inProcess.text()) {
            std::fprintf(stderr, "the component server did not do what the library does\n");
            return 1;
        }
        Report(operation, lines, *host, with, without);
    }
    return 0;
}
