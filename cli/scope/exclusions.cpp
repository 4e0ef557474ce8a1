#include "cli/scope/exclusions.h"

#include "cli/output/terminal_text.h"
#include "cli/scope/near_names.h"
#include "cli/scope/wildcard.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <initializer_list>

namespace lintara::cli {
namespace {

using workspace::Module;

// A pattern for a name of several parts with dots between them: each part by itself, so that a star does not
// reach over a dot.
class DottedPattern {
  public:
    explicit DottedPattern(TextView pattern) {
        for (std::size_t at = 0;;) {
            const std::size_t dot = pattern.find(u'.', at);
            parts_.emplace_back(pattern.substr(at, dot - at));
            if (dot == TextView::npos) {
                return;
            }
            at = dot + 1;
        }
    }

    [[nodiscard]] bool Matches(std::initializer_list<TextView> names) const {
        return std::ranges::equal(parts_, names, &Wildcard::Matches);
    }

  private:
    std::vector<Wildcard> parts_;
};

class Exclusions {
  public:
    Exclusions(const std::vector<std::string>& patterns, bool severalProjects)
        : severalProjects_(severalProjects) {
        for (const std::string& pattern : patterns) {
            patterns_.emplace_back(workspace::FromUtf8(pattern));
        }
    }

    [[nodiscard]] bool Exclude(TextView project, TextView component) const {
        return AnyMatches({component}) || (severalProjects_ && AnyMatches({project, component}));
    }

    [[nodiscard]] bool Exclude(TextView project, TextView component, TextView procedure) const {
        return AnyMatches({component, procedure}) ||
               (severalProjects_ && AnyMatches({project, component, procedure}));
    }

  private:
    [[nodiscard]] bool AnyMatches(std::initializer_list<TextView> names) const {
        return std::ranges::any_of(patterns_,
                                   [&](const DottedPattern& pattern) { return pattern.Matches(names); });
    }

    std::vector<DottedPattern> patterns_;
    bool severalProjects_;
};

// Whether one of the lines, the last one excluded, is a comment that says so.
bool HasSkipComment(const Module& module, Line begin, Line end) {
    Text line;
    for (; begin < end; ++begin) {
        module.ReadLine(begin, line);
        if (IsSkipComment(line)) {
            return true;
        }
    }
    return false;
}

bool IsMarked(const Module& module, const workspace::ProcedureInfo& procedure) {
    return HasSkipComment(module, procedure.start, procedure.header);
}

bool IsMarked(const workspace::Component& component) {
    const Module& module = *component.module;
    return HasSkipComment(module, Line(1), Line(module.CountOfDeclarationLines() + 1));
}

void LeaveOutProcedures(const Exclusions& exclusions, ScopedComponent& scope) {
    const Module& module = *scope.component->module;
    const auto isMarked = [&](const workspace::ProcedureInfo& procedure) {
        return IsMarked(module, procedure);
    };
    std::erase_if(scope.groups, [&](const ProcedureGroup& group) {
        return exclusions.Exclude(scope.project->name(), scope.component->name, group.name) ||
               std::ranges::any_of(group.reached, isMarked);
    });
    for (ProcedureGroup& group : scope.groups) {
        std::erase_if(group.unreached, isMarked);
    }
}

bool ExcludesAnything(const Exclusions& exclusions, const workspace::Project& project,
                      const workspace::Component& component) {
    return exclusions.Exclude(project.name(), component.name) ||
           std::ranges::any_of(component.module->Procedures(), [&](const auto& procedure) {
               return exclusions.Exclude(project.name(), component.name, procedure.name);
           });
}

// The names that a pattern of as many parts may mean.
std::vector<Text> NamesLike(std::string_view pattern, const workspace::Workspace& workspace) {
    const bool namesProcedures = pattern.contains('.');
    std::vector<Text> names;
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            names.push_back(component->name);
            if (namesProcedures) {
                for (const auto& procedure : component->module->Procedures()) {
                    names.push_back(component->name + u"." + procedure.name);
                }
            }
        }
    }
    return names;
}

// What follows `word` and the blanks around it, when `text` begins with it; letter case does not matter.
bool Skip(TextView& text, TextView word) {
    text = text.substr(workspace::SkipBlanks(text));
    if (!workspace::SameName(text.substr(0, word.size()), word)) {
        return false;
    }
    text = text.substr(word.size());
    return true;
}

}  // namespace

bool IsSkipComment(TextView line) {
    const bool isComment = Skip(line, u"'") || (Skip(line, u"rem") && line.starts_with(u' '));
    return isComment && Skip(line, u"lintara") && Skip(line, u":") && Skip(line, u"skip") &&
           (line.empty() || !workspace::IsWordCharacter(line.front()));
}

void LeaveOutExcluded(const workspace::Workspace& workspace, const std::vector<std::string>& patterns,
                      std::vector<ScopedComponent>& scope) {
    const Exclusions exclusions(patterns, workspace.projects().size() > 1);
    std::erase_if(scope, [&](const ScopedComponent& component) {
        return exclusions.Exclude(component.project->name(), component.component->name) ||
               IsMarked(*component.component);
    });
    for (ScopedComponent& component : scope) {
        LeaveOutProcedures(exclusions, component);
    }
}

std::vector<std::string> UnmatchedExclusions(const workspace::Workspace& workspace,
                                             const ScopeOptions& options) {
    std::vector<std::string> sentences;
    for (const std::string& pattern : options.mustExclude ? options.excluded : std::vector<std::string>()) {
        const Exclusions exclusions({pattern}, workspace.projects().size() > 1);
        const bool matched = std::ranges::any_of(workspace.projects(), [&](const auto& project) {
            return std::ranges::any_of(project->components(), [&](const auto& component) {
                return ExcludesAnything(exclusions, *project, *component);
            });
        });
        if (!matched) {
            sentences.push_back("--exclude: '" + Printable(std::string_view(pattern)) +
                                "' names no component and no Component.Procedure, so it leaves out nothing." +
                                Suggestion(workspace::FromUtf8(pattern), NamesLike(pattern, workspace)));
        }
    }
    return sentences;
}

}  // namespace lintara::cli
