#include "tests/cli/edited_module.h"

#include "cli/edits/number_insertion.h"
#include "cli/edits/number_removal.h"
#include "tests/cli/command_run.h"
#include "workspace/encoding.h"
#include "workspace/object_model.h"

namespace lintara::cli {
namespace {

// The shown code of a file begins behind its attributes at the top.
std::size_t CodeBegin(std::string_view bytes) {
    std::size_t at = 0;
    while (bytes.substr(at).starts_with("Attribute VB_")) {
        at = bytes.find('\n', at) + 1;
    }
    return at;
}

}  // namespace

EditedModule::EditedModule(std::unique_ptr<workspace::Module> module)
    : workspace_(std::make_unique<workspace::Workspace>()) {
    project_ = &workspace_->Add(std::make_unique<workspace::Project>(u"Project1", ""));
    auto component = std::make_unique<workspace::Component>();
    component->name = u"Module1";
    component->module = std::move(module);
    component_ = &project_->Add(std::move(component));
}

EditedModule::EditedModule(std::string_view code)
    : EditedModule(std::make_unique<workspace::Module>(Replaced(code, "\n", "\r\n"), 0,
                                                       *workspace::FindEncoding("utf-8"))) {}

EditedModule EditedModule::FromFile(std::string bytes) {
    const std::size_t begin = CodeBegin(bytes);
    return EditedModule(
        std::make_unique<workspace::Module>(std::move(bytes), begin, workspace::DefaultEncoding()));
}

ComponentReport EditedModule::Insert(NumberOptions numbers, bool exact) {
    return Edit(std::make_unique<NumberInsertion>(numbers), false, exact);
}

ComponentReport EditedModule::Remove(bool exact) {
    return Edit(std::make_unique<NumberRemoval>(), true, exact);
}

ComponentReport EditedModule::Edit(std::unique_ptr<ProcedureEdit> edit, bool backwards, bool exact) {
    EditPlan plan{.backwards = backwards, .exact = exact};
    plan.edits.push_back(std::move(edit));
    return Edit(std::move(plan));
}

ComponentReport EditedModule::Edit(EditPlan plan, Platform platform) {
    ProcedureEditor editor(*workspace_, std::make_shared<workspace::WorkspaceGlobals>(*workspace_),
                           std::move(platform), std::move(plan));
    return editor.Edit({project_, component_, GroupProcedures(module().Procedures())});
}

std::string EditedModule::Code() const {
    return Replaced(Bytes(), "\r\n", "\n");
}

std::string EditedModule::Bytes() const {
    std::string bytes;
    module().AppendCurrentBytes(bytes);
    return bytes;
}

const std::string& EditedModule::OriginalBytes() const {
    return module().originalBytes();
}

std::vector<std::string> SkippedIn(const ComponentReport& report) {
    std::vector<std::string> skipped;
    for (const SkippedProcedure& procedure : report.skipped) {
        skipped.push_back(std::string(CodeOf(procedure.reason)) + " " + workspace::ToUtf8(procedure.name));
    }
    return skipped;
}

std::vector<std::string> EditedIn(const ComponentReport& report) {
    std::vector<std::string> edited;
    for (const EditedProcedure& procedure : report.edited) {
        edited.push_back(workspace::ToUtf8(procedure.name));
    }
    return edited;
}

}  // namespace lintara::cli
