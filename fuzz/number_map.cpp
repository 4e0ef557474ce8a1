// Any bytes as the map of a numbered copy: it is read, with places that make sense, or refused with a reason.
// The map of a module that was numbered tells the numbers that stand in it.
#include "cli/numbers/number_map.h"

#include "assistant/lintara.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "tests/support/procedure_bodies.h"
#include "workspace/module.h"
#include "workspace/object_model.h"
#include "workspace/workspace.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>

namespace lintara::fuzz {
namespace {

void CheckProcedure(const cli::NumberedProcedure& procedure) {
    Require(procedure.header.line >= Line{1} && procedure.header.fileLine >= 1, "a procedure has a place");
    for (const cli::PlacedNumber& number : procedure.numbers) {
        Require(number.number >= 0, "a number is none below 0");
        Require(number.source.line >= procedure.header.line &&
                    number.source.fileLine >= procedure.header.fileLine,
                "numbers stand below their procedure's header");
    }
}

void CheckAnyMap(const std::string& bytes) {
    const auto map = cli::ParseNumberMap(bytes);
    if (!map) {
        Require(!map.error().empty(), "a refusal has a reason");
        return;
    }
    for (const cli::MappedComponent& component : map->components) {
        Require(std::filesystem::path(component.file).is_relative(), "a file lies beside the map",
                component.file);
        for (const cli::NumberedProcedure& procedure : component.procedures) {
            CheckProcedure(procedure);
        }
    }
}

void Number(workspace::Workspace& opened, const workspace::Component& component,
            const cli::NumberOptions& numbers) {
    Lintara library;
    library.oG = std::make_shared<workspace::WorkspaceGlobals>(opened);
    for (const Text& name : support::ProcedureNames(*component.module)) {
        library.LineNumbersInserter(u"P", u"M", name, numbers.base, numbers.step);
    }
}

void CheckOwnMap(Input& input) {
    const std::int32_t base = input.Between<std::int32_t>(0, 70000);
    const std::int32_t step = input.Between<std::int32_t>(1, 100);
    workspace::Workspace opened;
    auto& project = opened.Add(std::make_unique<workspace::Project>(u"P", "P.vbp"));
    auto made = std::make_unique<workspace::Component>();
    made->name = u"M";
    made->path = "M.bas";
    made->module = workspace::Module::FromText(input.RestAsText());
    const workspace::Component& component = project.Add(std::move(made));
    Number(opened, component, {.base = base, .step = step});
    const std::string bytes = cli::NumberMapText(opened, {.base = base, .step = step});
    const auto map = cli::ParseNumberMap(bytes);
    Require(map.has_value(), "a map that was written is read", bytes);
    Require(map->numbers.base == base && map->numbers.step == step, "a map knows how numbers were counted");
    const auto placed = cli::PlacedNumbersOf(*component.module, cli::SourceLines(*component.module));
    std::size_t count = 0;
    for (const cli::NumberedProcedure& procedure : placed) {
        count += procedure.numbers.size();
    }
    for (const cli::MappedComponent& mapped : map->components) {
        for (const cli::NumberedProcedure& procedure : mapped.procedures) {
            CheckProcedure(procedure);
            count -= procedure.numbers.size();
        }
    }
    Require(count == 0, "a map has every number once", bytes);
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace lintara;
    fuzz::Input input(data, size);
    if (input.Flag()) {
        fuzz::CheckOwnMap(input);
    } else {
        fuzz::CheckAnyMap(input.Rest());
    }
    return 0;
}
