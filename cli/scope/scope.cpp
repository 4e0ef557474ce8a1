#include "cli/scope/scope.h"

#include "cli/output/terminal_text.h"
#include "cli/scope/exclusions.h"
#include "cli/scope/near_names.h"
#include "cli/scope/wildcard.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"

#include <algorithm>
#include <unordered_set>

namespace lintara::cli {
namespace {

using workspace::Component;
using workspace::Project;
using workspace::Workspace;

struct Pattern {
    std::string text;
    Wildcard wildcard;
    bool matched = false;
};

std::vector<Pattern> PatternsOf(const std::vector<std::string>& texts) {
    std::vector<Pattern> patterns;
    for (const std::string& text : texts) {
        patterns.push_back({text, Wildcard(workspace::FromUtf8(text))});
    }
    return patterns;
}

// Every pattern that matches is marked, not the first only.
bool MatchAny(std::vector<Pattern>& patterns, std::initializer_list<TextView> names) {
    bool any = patterns.empty();
    for (Pattern& pattern : patterns) {
        for (const TextView name : names) {
            if (pattern.wildcard.Matches(name)) {
                pattern.matched = true;
                any = true;
            }
        }
    }
    return any;
}

Text QualifiedName(const Project& project, const Component& component) {
    return project.name() + u"." + component.name;
}

std::vector<Text> ComponentNames(const Workspace& workspace) {
    std::vector<Text> names;
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            names.push_back(component->name);
        }
    }
    return names;
}

std::vector<Text> ProcedureNames(const std::vector<ScopedComponent>& scope) {
    std::unordered_set<Text> seen;
    std::vector<Text> names;
    for (const ScopedComponent& component : scope) {
        for (const ProcedureGroup& group : component.groups) {
            if (seen.insert(group.name).second) {
                names.push_back(group.name);
            }
        }
    }
    return names;
}

const Pattern* FirstUnmatched(const std::vector<Pattern>& patterns) {
    const auto found = std::ranges::find(patterns, false, &Pattern::matched);
    return found == patterns.end() ? nullptr : &*found;
}

std::expected<std::vector<ScopedComponent>, std::string> SelectComponents(const Workspace& workspace,
                                                                          const ScopeOptions& options) {
    std::vector<Pattern> patterns = PatternsOf(options.components);
    std::vector<ScopedComponent> scope;
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            if (MatchAny(patterns, {component->name, QualifiedName(*project, *component)})) {
                scope.push_back(
                    {project.get(), component.get(), GroupProcedures(component->module->Procedures())});
            }
        }
    }
    if (const Pattern* unmatched = FirstUnmatched(patterns)) {
        return std::unexpected(
            UnknownName("--component", "component", unmatched->text, ComponentNames(workspace)));
    }
    return scope;
}

std::expected<void, std::string> SelectProcedures(std::vector<ScopedComponent>& scope,
                                                  const ScopeOptions& options) {
    std::vector<Pattern> patterns = PatternsOf(options.procedures);
    const std::vector<Text> all = patterns.empty() ? std::vector<Text>() : ProcedureNames(scope);
    for (ScopedComponent& component : scope) {
        std::erase_if(component.groups,
                      [&](const ProcedureGroup& group) { return !MatchAny(patterns, {group.name}); });
    }
    if (const Pattern* unmatched = FirstUnmatched(patterns)) {
        return std::unexpected(UnknownName("--procedure", "procedure", unmatched->text, all));
    }
    if (!patterns.empty()) {
        std::erase_if(scope, [](const ScopedComponent& component) { return component.groups.empty(); });
    }
    return {};
}

std::string DescribePlace(const ScopedComponent& found, const CaretPlace& place) {
    return "line " + std::to_string(place.line.value()) + " of " + Printable(found.component->name);
}

// Leaves the one group whose block holds the caret's line.
std::expected<void, std::string> SelectProcedureAt(ScopedComponent& scope, const CaretPlace& place) {
    if (auto outside = CheckCaretLine(scope, place)) {
        return std::unexpected(*std::move(outside));
    }
    const auto procedure = scope.component->module->ProcedureAt(place.line);
    if (!procedure) {
        return std::unexpected("--at: " + DescribePlace(scope, place) +
                               " lies in the declarations, in no procedure");
    }
    std::erase_if(scope.groups, [&](const ProcedureGroup& group) {
        return !workspace::SameName(group.name, procedure->name);
    });
    return {};
}

}  // namespace

std::expected<ScopedComponent, std::string> FindCaretComponent(const Workspace& workspace,
                                                               const CaretPlace& place) {
    const Text wanted = workspace::FromUtf8(place.component);
    std::vector<ScopedComponent> found;
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            if (workspace::SameName(component->name, wanted) ||
                workspace::SameName(QualifiedName(*project, *component), wanted)) {
                found.push_back({project.get(), component.get(), {}});
            }
        }
    }
    if (found.empty()) {
        return std::unexpected(UnknownName("--at", "component", place.component, ComponentNames(workspace)));
    }
    if (found.size() > 1 && found[0].project != found[1].project) {
        return std::unexpected("--at: several projects have a component '" + Printable(wanted) + "'; give " +
                               Printable(QualifiedName(*found[0].project, *found[0].component)) + " or " +
                               Printable(QualifiedName(*found[1].project, *found[1].component)));
    }
    return std::move(found.front());
}

std::optional<std::string> CheckCaretLine(const ScopedComponent& found, const CaretPlace& place) {
    const std::int32_t count = found.component->module->CountOfLines();
    if (place.line.value() <= count) {
        return std::nullopt;
    }
    return "--at: there is no " + DescribePlace(found, place) + "; it has " + std::to_string(count) +
           (count == 1 ? " line" : " lines");
}

std::expected<std::vector<ScopedComponent>, std::string> ResolveScope(const Workspace& workspace,
                                                                      const ScopeOptions& options) {
    if (options.at) {
        auto found = FindCaretComponent(workspace, *options.at);
        if (!found) {
            return std::unexpected(found.error());
        }
        found->groups = GroupProcedures(found->component->module->Procedures());
        if (options.scope == Scope::Procedure) {
            if (const auto selected = SelectProcedureAt(*found, *options.at); !selected) {
                return std::unexpected(selected.error());
            }
        }
        std::vector<ScopedComponent> scope{std::move(*found)};
        LeaveOutExcluded(workspace, options.excluded, scope);
        return scope;
    }
    auto scope = SelectComponents(workspace, options);
    if (scope) {
        if (const auto selected = SelectProcedures(*scope, options); !selected) {
            return std::unexpected(selected.error());
        }
        LeaveOutExcluded(workspace, options.excluded, *scope);
    }
    return scope;
}

}  // namespace lintara::cli
