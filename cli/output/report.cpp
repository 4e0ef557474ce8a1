#include "cli/output/report.h"

#include "cli/output/json_text.h"
#include "cli/output/terminal_text.h"
#include "cli/project/component_kind.h"

#include <algorithm>

namespace lintara::cli {
namespace {

template <class Part>
std::size_t SumOf(const std::vector<ComponentReport>& components, Part part) {
    std::size_t sum = 0;
    for (const ComponentReport& component : components) {
        sum += part(component);
    }
    return sum;
}

Json ProcedureObject(const Text& name, std::string_view kind, Line line, const workspace::Module& module) {
    return {{"name", JsonText(name)},
            {"kind", kind},
            {"line", line.value()},
            {"fileLine", module.OriginalFileLine(line)}};
}

Json ComponentObject(const ComponentReport& report) {
    const workspace::Module& module = *report.component->module;
    Json edited = Json::array();
    for (const EditedProcedure& procedure : report.edited) {
        edited.push_back(ProcedureObject(procedure.name, procedure.kind, procedure.line, module));
    }
    Json skipped = Json::array();
    for (const SkippedProcedure& procedure : report.skipped) {
        Json object = ProcedureObject(procedure.name, procedure.kind, procedure.line, module);
        object["reason"] = CodeOf(procedure.reason);
        object["message"] = procedure.message;
        skipped.push_back(std::move(object));
    }
    Json object = {{"project", JsonText(report.project->name())},
                   {"component", JsonText(report.component->name)},
                   {"kind", KindWord(report.component->type)},
                   {"file", JsonPath(report.component->path)},
                   {"linesChanged", report.linesChanged},
                   {"edited", std::move(edited)},
                   {"skipped", std::move(skipped)}};
    if (report.found) {
        object["found"] = *report.found;
    }
    return object;
}

Json WarningsOf(const Report& report) {
    Json warnings = Json::array();
    for (const workspace::Diagnostic& warning : report.warnings) {
        warnings.push_back(DiagnosticObject(warning));
    }
    for (const ComponentReport& component : report.components) {
        const workspace::Component& c = *component.component;
        for (const SkippedProcedure& skipped : component.skipped) {
            warnings.push_back(
                DiagnosticObject({c.path, c.module->OriginalFileLine(skipped.at), SkipSentence(skipped, c)},
                                 CodeOf(skipped.reason)));
        }
        for (const Remark& remark : component.remarks) {
            warnings.push_back(DiagnosticObject(
                {c.path, c.module->OriginalFileLine(remark.at), remark.message}, remark.code));
        }
    }
    return warnings;
}

}  // namespace

std::string_view CodeOf(SkipReason reason) {
    switch (reason) {
        case SkipReason::RangeMismatch:
            return "range-mismatch";
        case SkipReason::AlreadyNumbered:
            return "already-numbered";
        case SkipReason::ForeignNumbers:
            return "foreign-numbers";
        case SkipReason::NumberWidth:
            return "number-width";
        case SkipReason::JumpTarget:
            return "jump-target";
        case SkipReason::NumberingLimit:
            return "numbering-limit";
        case SkipReason::DuplicateProcedure:
            return "duplicate-procedure";
        case SkipReason::NameClash:
            return "name-clash";
        case SkipReason::EmptyBody:
            return "empty-body";
        case SkipReason::OutsideBody:
            return "outside-body";
        case SkipReason::AlreadyInserted:
            return "already-inserted";
        case SkipReason::BreaksProcedure:
            return "breaks-procedure";
        case SkipReason::MarkerPrefix:
            return "marker-prefix";
        case SkipReason::MarkerMismatch:
            return "marker-mismatch";
        case SkipReason::HiddenLines:
            return "hidden-lines";
        case SkipReason::LabelExists:
            return "label-exists";
        case SkipReason::LabelPrefix:
            return "label-prefix";
        case SkipReason::LabelMismatch:
            return "label-mismatch";
        case SkipReason::CrowdedLine:
            return "crowded-line";
        case SkipReason::LongName:
            return "long-name";
    }
    return "";
}

std::size_t Report::linesChanged() const {
    return SumOf(components, [](const auto& c) { return c.linesChanged; });
}

std::size_t Report::proceduresEdited() const {
    return SumOf(components, [](const auto& c) { return c.edited.size(); });
}

std::size_t Report::proceduresSkipped() const {
    return SumOf(components, [](const auto& c) { return c.skipped.size(); });
}

std::size_t Report::componentsChanged() const {
    return SumOf(components, [](const auto& c) -> std::size_t { return c.changed ? 1 : 0; });
}

std::string SkipSentence(const SkippedProcedure& skipped, const workspace::Component& component) {
    return std::string(skipped.kind) + " " + Printable(skipped.name) + " in " + Printable(component.name) +
           " " + std::string(skipped.fate) + ": " + skipped.message;
}

std::string ToJson(const Report& report) {
    Json components = Json::array();
    for (const ComponentReport& component : report.components) {
        components.push_back(ComponentObject(component));
    }
    Json errors = Json::array();
    for (const workspace::Diagnostic& error : report.errors) {
        errors.push_back(DiagnosticObject(error));
    }
    Json files = Json::array();
    for (const std::filesystem::path& file : report.files) {
        files.push_back(JsonPath(file));
    }
    return Dump({{"command", report.command},
                 {"status", static_cast<int>(report.status)},
                 {"written", report.written},
                 {"linesChanged", report.linesChanged()},
                 {"proceduresEdited", report.proceduresEdited()},
                 {"proceduresSkipped", report.proceduresSkipped()},
                 {"components", std::move(components)},
                 {"warnings", WarningsOf(report)},
                 {"errors", std::move(errors)},
                 {"files", std::move(files)}});
}

}  // namespace lintara::cli
