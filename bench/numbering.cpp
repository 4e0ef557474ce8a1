#include "bench/numbering.h"

#include "workspace/characters.h"
#include "workspace/object_model.h"

#include <memory>
#include <unordered_set>

namespace lintara::bench {

Lintara LibraryOver(workspace::Workspace& workspace) {
    Lintara library;
    library.oG = std::make_shared<workspace::WorkspaceGlobals>(workspace);
    return library;
}

std::size_t NumberComponent(Lintara& library, const workspace::Project& project,
                            const workspace::Component& component) {
    constexpr std::int32_t base = 10000;
    constexpr std::int32_t step = 1;
    std::unordered_set<Text> seen;
    for (const workspace::ProcedureInfo& procedure : component.module->Procedures()) {
        if (seen.insert(workspace::FoldCase(procedure.name)).second) {
            library.LineNumbersInserter(project.name(), component.name, procedure.name, base, step);
        }
    }
    return seen.size();
}

std::size_t NumberProject(Lintara& library, const workspace::Project& project) {
    std::size_t names = 0;
    for (const auto& component : project.components()) {
        names += NumberComponent(library, project, *component);
    }
    return names;
}

}  // namespace lintara::bench
