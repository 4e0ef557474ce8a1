#include "cli/numbers/number_lookup.h"

#include "cli/output/terminal_text.h"
#include "cli/scope/near_names.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"
#include "workspace/parallel.h"
#include "workspace/path_resolver.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <system_error>

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

bool IsSameProcedure(const NumberedProcedure& a, const NumberedProcedure& b) {
    return a.kind == b.kind && SameName(a.name, b.name);
}

// The procedure in the sources that has the lines of `wanted`, the nearest of several; null when none has.
const NumberedProcedure* PresentProcedure(const std::vector<NumberedProcedure>& present,
                                          const NumberedProcedure& wanted) {
    const NumberedProcedure* best = nullptr;
    const auto distance = [&](const NumberedProcedure& procedure) {
        return std::abs(procedure.header.line - wanted.header.line);
    };
    for (const NumberedProcedure& procedure : present) {
        if (IsSameProcedure(procedure, wanted) && procedure.checksum == wanted.checksum &&
            (best == nullptr || distance(procedure) < distance(*best))) {
            best = &procedure;
        }
    }
    return best;
}

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
            const NumberedProcedure* now = PresentProcedure(*table_.present, procedure);
            found.changed = now == nullptr;
            if (now != nullptr) {
                found.place.line += now->header.line - procedure.header.line;
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
    std::optional<SourceLines> source_;
};

std::string UnknownName(std::string_view option, std::string_view kind, const std::string& wanted,
                        const std::vector<Text>& names) {
    return std::string(option) + ": there is no " + std::string(kind) + " '" +
           Printable(std::string_view(wanted)) + "'." + Suggestion(FromUtf8(wanted), names);
}

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
    std::erase_if(procedures, [&](const NumberedProcedure& procedure) {
        return std::ranges::any_of(mapped,
                                   [&](const auto& other) { return IsSameProcedure(procedure, other); });
    });
    std::ranges::move(mapped, std::back_inserter(procedures));
}

// The folder in which the files of a map's project lie.
fs::path FolderOfProject(const workspace::Workspace& workspace, TextView name) {
    const workspace::Project* project = workspace.Find(name);
    if (project == nullptr) {
        project = workspace.projects().front().get();
    }
    std::error_code error;
    return fs::is_directory(project->path(), error) ? project->path() : workspace::FolderOf(project->path());
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

std::vector<NumberTable> TablesOf(NumberMap map, const workspace::Workspace& workspace) {
    std::vector<NumberTable> tables = TablesOf(workspace);
    for (NumberTable& table : tables) {
        table.present = table.procedures;
        // Numbers that stand in the sources now are not those of the build.
        for (NumberedProcedure& procedure : table.procedures) {
            procedure.numbers.clear();
        }
    }
    for (MappedComponent& mapped : map.components) {
        const auto same = std::ranges::find_if(tables, [&](const NumberTable& table) {
            return SameName(table.project, mapped.project) && SameName(table.component, mapped.component);
        });
        if (same == tables.end()) {
            tables.push_back({mapped.project, mapped.component,
                              FolderOfProject(workspace, mapped.project) / mapped.file,
                              std::move(mapped.procedures), nullptr});
        } else {
            AddMapped(std::move(mapped.procedures), same->procedures);
        }
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
