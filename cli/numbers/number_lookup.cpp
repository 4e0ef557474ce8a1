#include "cli/numbers/number_lookup.h"

#include "cli/output/terminal_text.h"
#include "cli/scope/near_names.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"
#include "workspace/parallel.h"
#include "workspace/path_resolver.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

using workspace::FromUtf8;
using workspace::SameName;

bool IsAskedFor(const NumberQuery& query, const NumberTable& table) {
    return NamesComponent(query.component, table.project, table.component);
}

bool IsAskedFor(const NumberQuery& query, const NumberedProcedure& procedure) {
    return (query.procedure.empty() || SameName(FromUtf8(query.procedure), procedure.name)) &&
           (query.kind.empty() || query.kind == procedure.kind);
}

// Calls visit(procedure) for every procedure of the table that the query may mean.
template <class Visit>
void ForEachAskedFor(const NumberTable& table, const NumberQuery& query, Visit visit) {
    for (const NumberedProcedure& procedure : table.procedures) {
        if (IsAskedFor(query, table) && IsAskedFor(query, procedure)) {
            visit(procedure);
        }
    }
}

// What makes two procedures of a module the same: kind and name.
std::string KeyOf(const NumberedProcedure& procedure) {
    return procedure.kind + " " + workspace::ToUtf8(workspace::FoldCase(procedure.name));
}

// The procedures that the sources have, to be found by kind, name and lines.
class PresentProcedures {
  public:
    explicit PresentProcedures(const std::vector<NumberedProcedure>& procedures) {
        for (const NumberedProcedure& procedure : procedures) {
            byContent_[ContentOf(procedure)].push_back(&procedure);
        }
        for (auto& [content, same] : byContent_) {
            std::ranges::stable_sort(same, {}, LineOf);
        }
    }

    // The one that has the lines of `wanted`, the nearest of several; null when none has.
    [[nodiscard]] const NumberedProcedure* Find(const NumberedProcedure& wanted) const {
        const auto found = byContent_.find(ContentOf(wanted));
        if (found == byContent_.end()) {
            return nullptr;
        }
        const auto& same = found->second;
        const auto below = std::ranges::lower_bound(same, LineOf(&wanted), {}, LineOf);
        if (below == same.begin()) {
            return *below;
        }
        const auto above = std::prev(below);
        const bool isAbove =
            below == same.end() || LineOf(&wanted) - LineOf(*above) <= LineOf(*below) - LineOf(&wanted);
        return isAbove ? *above : *below;
    }

  private:
    static std::string ContentOf(const NumberedProcedure& procedure) {
        return KeyOf(procedure) + " " + std::to_string(procedure.checksum);
    }
    static std::int64_t LineOf(const NumberedProcedure* procedure) { return procedure->header.line.value(); }

    std::unordered_map<std::string, std::vector<const NumberedProcedure*>> byContent_;
};

// Finds the place of one number after the other; the component's file is taken to lines once.
class Locator {
  public:
    explicit Locator(const NumberTable& table) : table_(table) {}

    [[nodiscard]] FoundNumber Locate(const NumberedProcedure& procedure, const PlacedNumber& number) {
        FoundNumber found{.table = &table_,
                          .procedure = &procedure,
                          .place = number.source,
                          .inserted = number.inserted,
                          .changed = table_.now == nullptr,
                          .text = {}};
        if (table_.present) {
            if (!present_) {
                present_.emplace(*table_.present);
            }
            const NumberedProcedure* now = present_->Find(procedure);
            const std::int64_t offset = number.source.line - procedure.header.line;
            // A line below the module's last one is no line of a procedure that is the same.
            found.changed =
                now == nullptr || now->header.line.value() + offset > table_.now->module->CountOfLines();
            if (!found.changed) {
                found.place.line = now->header.line + static_cast<std::int32_t>(offset);
                found.place.fileLine += now->header.fileLine - procedure.header.fileLine;
            }
        }
        if (!found.changed) {
            if (!source_) {
                source_.emplace(*table_.now->module);
            }
            found.text = source_->TextOf(found.place.fileLine);
        }
        return found;
    }

  private:
    const NumberTable& table_;
    std::optional<PresentProcedures> present_;
    std::optional<SourceLines> source_;
};

// What is wrong with the names in the query.
std::optional<std::string> CheckNames(const std::vector<NumberTable>& tables, const NumberQuery& query) {
    std::vector<Text> components;
    std::vector<Text> procedures;
    bool component = false;
    bool procedure = query.procedure.empty();
    for (const NumberTable& table : tables) {
        components.push_back(table.component);
        if (!IsAskedFor(query, table)) {
            continue;
        }
        component = true;
        for (const NumberedProcedure& candidate : table.procedures) {
            procedures.push_back(candidate.name);
            procedure |= SameName(FromUtf8(query.procedure), candidate.name);
        }
    }
    if (!component && !query.component.empty()) {
        return UnknownName("--component", "component", query.component, components);
    }
    if (!procedure) {
        return UnknownName("--procedure", "procedure", query.procedure, procedures);
    }
    return std::nullopt;
}

// Puts the procedures of a map in the place of those of the sources that they are.
void AddMapped(std::vector<NumberedProcedure> mapped, std::vector<NumberedProcedure>& procedures) {
    std::unordered_set<std::string> keys;
    std::ranges::transform(mapped, std::inserter(keys, keys.end()), KeyOf);
    std::erase_if(procedures,
                  [&](const NumberedProcedure& procedure) { return keys.contains(KeyOf(procedure)); });
    std::ranges::move(mapped, std::back_inserter(procedures));
}

// The folder from which on the files of the project are named.
fs::path FolderOfProject(const workspace::Project& project) {
    std::error_code error;
    return fs::is_directory(project.path(), error) ? project.path() : workspace::FolderOf(project.path());
}

Text QualifiedKey(TextView project, TextView component) {
    return workspace::FoldCase(Text(project) + u"." + Text(component));
}

// Why the map has nothing to say about the workspace: none of its projects is open.
std::optional<std::string> OtherProjectsIn(const NumberMap& map, const workspace::Workspace& workspace) {
    std::string names;
    std::unordered_set<Text> told;
    for (const MappedComponent& mapped : map.components) {
        if (workspace.Find(mapped.project) != nullptr) {
            return std::nullopt;
        }
        if (told.insert(workspace::FoldCase(mapped.project)).second) {
            names += (names.empty() ? "" : ", ") + Printable(mapped.project);
        }
    }
    return names.empty() ? std::nullopt : std::optional("is the map of another project: " + names);
}

}  // namespace

bool NamesComponent(const std::string& written, TextView project, TextView component) {
    const Text name = FromUtf8(written);
    return name.empty() || SameName(name, component) ||
           SameName(name, Text(project) + u"." + Text(component));
}

std::vector<NumberTable> TablesOf(const workspace::Workspace& workspace) {
    std::vector<NumberTable> tables;
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            tables.push_back({project->name(), component->name, component->path, {}, component.get()});
        }
    }
    workspace::InParallel(tables.size(), [&](std::size_t i) {
        const workspace::Module& module = *tables[i].now->module;
        tables[i].procedures = PlacedNumbersOf(module, SourceLines(module));
    });
    return tables;
}

std::expected<std::vector<NumberTable>, std::string> TablesOf(NumberMap map,
                                                              const workspace::Workspace& workspace) {
    if (auto others = OtherProjectsIn(map, workspace)) {
        return std::unexpected(*std::move(others));
    }
    std::vector<NumberTable> tables = TablesOf(workspace);
    std::unordered_map<Text, std::size_t> indexes;
    for (NumberTable& table : tables) {
        indexes.try_emplace(QualifiedKey(table.project, table.component), indexes.size());
        table.present = table.procedures;
        // Numbers that stand in the sources now are not those of the build.
        for (NumberedProcedure& procedure : table.procedures) {
            procedure.numbers.clear();
        }
    }
    for (MappedComponent& mapped : map.components) {
        const workspace::Project* const project = workspace.Find(mapped.project);
        if (project == nullptr) {
            continue;
        }
        const auto same = indexes.find(QualifiedKey(mapped.project, mapped.component));
        if (same == indexes.end()) {
            tables.push_back({mapped.project, mapped.component, FolderOfProject(*project) / mapped.file,
                              std::move(mapped.procedures), nullptr});
        } else {
            AddMapped(std::move(mapped.procedures), tables[same->second].procedures);
        }
        NumberTable& table = same == indexes.end() ? tables.back() : tables[same->second];
        table.mappedFile = std::move(mapped.file);
        table.mappedCopy = mapped.copy;
    }
    return tables;
}

std::expected<std::vector<FoundNumber>, std::string> FindNumber(const std::vector<NumberTable>& tables,
                                                                const NumberQuery& query) {
    if (auto wrong = CheckNames(tables, query)) {
        return std::unexpected(*std::move(wrong));
    }
    std::vector<FoundNumber> found;
    for (const NumberTable& table : tables) {
        Locator locator(table);
        ForEachAskedFor(table, query, [&](const NumberedProcedure& procedure) {
            for (const PlacedNumber& number : procedure.numbers) {
                if (number.number == query.number) {
                    found.push_back(locator.Locate(procedure, number));
                }
            }
        });
    }
    return found;
}

std::string NotFoundMessage(const std::vector<NumberTable>& tables, const NumberQuery& query) {
    if (query.number == 0) {
        return "Erl is 0 when no numbered line ran ahead of the error: it happened above the first number of "
               "its "
               "procedure, or in a procedure without numbers";
    }
    std::optional<std::int64_t> below;
    std::optional<std::int64_t> above;
    const auto compare = [&](const NumberedProcedure& procedure) {
        for (const PlacedNumber& number : procedure.numbers) {
            if (number.number < query.number) {
                below = std::max(below.value_or(number.number), number.number);
            } else {
                above = std::min(above.value_or(number.number), number.number);
            }
        }
    };
    for (const NumberTable& table : tables) {
        ForEachAskedFor(table, query, compare);
    }
    std::string message = "no line has the number " + std::to_string(query.number);
    if (!query.procedure.empty()) {
        message += " in " + Printable(std::string_view(query.procedure));
    }
    if (!below && !above) {
        return message + "; there are no numbers there";
    }
    message += "; the nearest ";
    message += below && above ? "numbers are " : "number is ";
    if (below) {
        message += std::to_string(*below);
    }
    if (above) {
        message += (below ? " and " : "") + std::to_string(*above);
    }
    return message;
}

}  // namespace lintara::cli
