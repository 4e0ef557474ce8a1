#include "cli/numbers/where_run.h"

#include "base/strings.h"
#include "cli/edits/refusal.h"
#include "cli/history/history_store.h"
#include "cli/numbers/number_map.h"
#include "cli/output/json_text.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/project/open_project.h"
#include "cli/scope/exclusions.h"
#include "cli/scope/scope.h"
#include "workspace/checksum.h"
#include "workspace/read_file.h"
#include "workspace/syntax.h"

#include <utility>
#include <vector>

namespace lintara::cli {
namespace {

class WhereRun {
  public:
    WhereRun(const WhereOptions& options, Environment& environment)
        : options_(options), environment_(environment), messages_(environment.streams, false) {}

    ExitStatus Run() {
        Streams& streams = environment_.streams;
        Progress progress(streams, true);
        const auto opened = OpenOrComplain(workspace_, options_.read, streams.in, progress, messages_);
        if (!opened) {
            return opened.error();
        }
        if (const auto failed = options_.map ? ReadMap() : BuildAgain()) {
            return *failed;
        }
        const auto found = FindNumber(tables_, options_.query);
        if (!found) {
            return Complain(ExitStatus::Usage, found.error());
        }
        Answer(*found);
        Remember(*found);
        return found->empty() ? ExitStatus::NotFound : ExitStatus::Done;
    }

  private:
    ExitStatus Complain(ExitStatus status, const std::string& what, std::filesystem::path path = {}) {
        messages_.Error({std::move(path), 0, what});
        return status;
    }

    std::optional<ExitStatus> ReadMap() {
        const std::filesystem::path& path = *options_.map;
        const auto content = workspace::ReadFile(path, largestMap);
        if (!content) {
            return Complain(ExitStatus::Failed, content.error(), path);
        }
        auto map = ParseNumberMap(content->bytes);
        if (!map) {
            return Complain(ExitStatus::Failed, map.error(), path);
        }
        auto tables = TablesOf(*std::move(map), workspace_);
        if (!tables) {
            return Complain(ExitStatus::Failed, tables.error(), path);
        }
        tables_ = *std::move(tables);
        return std::nullopt;
    }

    // Does what the build did, in memory.
    std::optional<ExitStatus> BuildAgain() {
        if (!options_.build) {
            tables_ = TablesOf(workspace_);
            return std::nullopt;
        }
        const auto scope = ResolveScope(workspace_, options_.everything);
        if (!scope) {
            return Complain(ExitStatus::Usage, scope.error());
        }
        for (const std::string& warning : UnmatchedExclusions(workspace_, options_.everything)) {
            messages_.Warning({{}, 0, warning});
        }
        try {
            const auto editor = MakeInsertionEditor(*options_.build, workspace_,
                                                    MakeGlobals(workspace_, environment_), environment_);
            for (const ScopedComponent& component : *scope) {
                if (NamesComponent(options_.query.component, component.project->name(),
                                   component.component->name)) {
                    reports_.push_back(editor->Edit(component));
                }
            }
        } catch (const Refusal& refusal) {
            return Complain(ExitStatus::Usage, refusal.what());
        }
        tables_ = TablesOf(workspace_);
        return std::nullopt;
    }

    // Whether the file of the copy beside the map is not the one that the map was made with. A map may be
    // kept without its copy; then nothing is known.
    [[nodiscard]] bool IsCopyChanged(const NumberTable& table) const {
        if (!options_.map || !table.mappedCopy) {
            return false;
        }
        const auto content = workspace::ReadFile(CopyOf(table));
        return content && workspace::Checksum(content->bytes) != *table.mappedCopy;
    }

    [[nodiscard]] std::filesystem::path CopyOf(const NumberTable& table) const {
        return std::filesystem::path(*options_.map).parent_path() / table.mappedFile;
    }

    void WarnOfChangedCopies(const std::vector<FoundNumber>& found) {
        const NumberTable* last = nullptr;
        for (const FoundNumber& number : found) {
            if (std::exchange(last, number.table) != number.table && IsCopyChanged(*number.table)) {
                messages_.Warning({CopyOf(*number.table), 0,
                                   "was changed since the map was made; the answer is about the numbers that "
                                   "it had then"},
                                  "copy-changed");
            }
        }
    }

    // One answer is a place to go to; several are a list.
    void Remember(const std::vector<FoundNumber>& found) {
        if (found.size() != 1 || found.front().table->now == nullptr || !found.front().text) {
            return;
        }
        const FoundNumber& number = found.front();
        RememberPlace(environment_, options_.read.path,
                      {.project = number.table->project,
                       .component = number.table->component,
                       .member = number.procedure->name,
                       .text = Text(Trim(*number.text)),
                       .line = number.place.line});
    }

    void Answer(const std::vector<FoundNumber>& found) {
        if (options_.json) {
            environment_.streams.out.Write(AsJson(found));
        } else {
            environment_.streams.out.Write(AsTable(found));
        }
        for (const FoundNumber& number : found) {
            if (number.changed) {
                messages_.Warning({number.table->file, number.place.fileLine, ChangedMessage(number)},
                                  "changed");
            }
        }
        WarnOfChangedCopies(found);
        if (found.empty()) {
            messages_.Error({{}, 0, NotFoundMessage(tables_, options_.query)});
            TellSkipped();
        }
    }

    // Procedures that have no numbers because the insertion skips them.
    void TellSkipped() {
        for (ComponentReport& report : reports_) {
            std::erase_if(report.skipped, [&](const SkippedProcedure& skipped) {
                return options_.query.procedure.empty() ||
                       !workspace::SameName(workspace::FromUtf8(options_.query.procedure), skipped.name);
            });
            report.remarks.clear();
            messages_.WarnOf(report);
        }
    }

    [[nodiscard]] static std::string ChangedMessage(const FoundNumber& number) {
        return number.procedure->kind + " " + Printable(number.procedure->name) + " in " +
               Printable(number.table->component) +
               (number.table->now == nullptr ? " is no longer in the project"
                                             : " changed since the map was made") +
               "; the line is that of the sources which were built";
    }

    [[nodiscard]] static std::string AsTable(const std::vector<FoundNumber>& found) {
        std::string out;
        for (const FoundNumber& number : found) {
            out += PrintablePath(number.table->file) + ":" + std::to_string(number.place.fileLine) + ": " +
                   Printable(number.table->component) + "." + Printable(number.procedure->name);
            if (number.text) {
                const TextView text = *number.text;
                out += ": " + Printable(text.substr(workspace::SkipBlanks(text)));
            }
            out += number.inserted ? " (of a line that was inserted there)\n" : "\n";
        }
        return out;
    }

    [[nodiscard]] std::string AsJson(const std::vector<FoundNumber>& found) const {
        Json places = Json::array();
        for (const FoundNumber& number : found) {
            places.push_back({{"project", JsonText(number.table->project)},
                              {"component", JsonText(number.table->component)},
                              {"procedure", JsonText(number.procedure->name)},
                              {"kind", number.procedure->kind},
                              {"file", JsonPath(number.table->file)},
                              {"line", number.place.line.value()},
                              {"fileLine", number.place.fileLine},
                              {"text", number.text ? Json(JsonText(*number.text)) : Json()},
                              {"inserted", number.inserted},
                              {"changed", number.changed},
                              {"copyChanged", IsCopyChanged(*number.table)}});
        }
        return Dump({{"erl", options_.query.number},
                     {"from", options_.map ? "map" : "sources"},
                     {"found", std::move(places)}});
    }

    const WhereOptions& options_;
    Environment& environment_;
    Messages messages_;
    workspace::Workspace workspace_;
    std::vector<ComponentReport> reports_;
    std::vector<NumberTable> tables_;
};

}  // namespace

ExitStatus RunWhere(const WhereOptions& options, Environment& environment) {
    return WhereRun(options, environment).Run();
}

}  // namespace lintara::cli
