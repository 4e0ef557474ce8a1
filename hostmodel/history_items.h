// The way to the navigation history of the active project: from `Globals.ProjectsData`, by the project's
// name, to its member "HistItems", which offers by name "CleanupBackHistory" and "CleanupNextHistory", and
// the entries "HistBackItem" and "HistNextItem" with an index from 0 to 9.
#pragma once

#include "base/result.h"
#include "hostmodel/dispatch.h"
#include "hostmodel/globals.h"

#include <array>
#include <memory>
#include <span>
#include <utility>

namespace lintara::hostmodel {

// Calls a member that yields an object. Fails when it yields anything else, and never returns null.
[[nodiscard]] inline Result<std::shared_ptr<Dispatch>> InvokeForObject(
    Dispatch& object, TextView name, std::span<const Value> arguments = {}) {
    return Then(object.Invoke(name, arguments), [](Value value) -> Result<std::shared_ptr<Dispatch>> {
        auto* const result = std::get_if<std::shared_ptr<Dispatch>>(&value);
        if (result == nullptr || *result == nullptr) {
            return Failure(ErrorNumber::ObjectNotSet, "the member yields no object");
        }
        return std::move(*result);
    });
}

// Fails when no project is active or it has no history; never returns null.
[[nodiscard]] inline Result<std::shared_ptr<Dispatch>> HistItemsOfActiveProject(Globals& globals) {
    constexpr auto NoObject = [] { return Failure(ErrorNumber::ObjectNotSet, "there is no such object"); };
    const auto ide = globals.VBE();
    const auto project = ide && *ide ? (*ide)->ActiveVBProject() : NoObject();
    const auto name = project && *project ? (*project)->Name() : Result<Text>(NoObject());
    const auto projects = globals.ProjectsData();
    if (!name || !projects || *projects == nullptr) {
        return NoObject();
    }
    const std::array<Value, 1> index{*name};
    return Then(InvokeForObject(**projects, u"", index),
                [](const auto& data) { return InvokeForObject(*data, u"HistItems"); });
}

}  // namespace lintara::hostmodel
