#include "tests/cli/edited_module.h"

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
    Options options;
    options.verb = Verb::Insert;
    options.numbers = numbers;
    options.edit.exact = exact;
    return Edit(options);
}

ComponentReport EditedModule::Remove(bool exact) {
    Options options;
    options.verb = Verb::Remove;
    options.edit.exact = exact;
    return Edit(options);
}

ComponentReport EditedModule::Edit(const Options& options) {
    LineNumberEditor editor(*workspace_, std::make_shared<workspace::WorkspaceGlobals>(*workspace_), options);
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
