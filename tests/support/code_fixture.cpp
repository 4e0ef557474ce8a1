#include "tests/support/code_fixture.h"

#include "hostmodel/code_pane.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <utility>

namespace lintara::support {
namespace {

constexpr std::string_view CaretMark = "^";
constexpr std::string_view BeginMark = "{{";
constexpr std::string_view EndMark = "}}";

Position PositionAt(std::string_view source, std::size_t offset) {
    Position position{Line{1}, Column{1}};
    const Text before = workspace::FromUtf8(source.substr(0, offset));
    for (const char16_t character : before) {
        if (character == u'\n') {
            ++position.line;
            position.column = Column{1};
        } else {
            ++position.column;
        }
    }
    return position;
}

// Takes `mark` out of the source; its position, if it stood there.
std::optional<Position> TakeMark(std::string& source, std::string_view mark) {
    const std::size_t offset = source.find(mark);
    if (offset == std::string::npos) {
        return std::nullopt;
    }
    source.erase(offset, mark.size());
    return PositionAt(source, offset);
}

hostmodel::Selection TakeSelection(std::string& source) {
    constexpr Position Front{Line{1}, Column{1}};
    if (const auto caret = TakeMark(source, CaretMark)) {
        return {*caret, *caret};
    }
    const auto begin = TakeMark(source, BeginMark);
    const auto end = TakeMark(source, EndMark);
    return {begin.value_or(Front), end.value_or(begin.value_or(Front))};
}

Text ModuleText(std::string_view source) {
    Text text;
    for (const char16_t character : workspace::FromUtf8(source)) {
        if (character == u'\n') {
            text += u'\r';
        }
        text += character;
    }
    return text;
}

}  // namespace

std::string Code(std::string_view source) {
    if (source.starts_with('\n')) {
        source.remove_prefix(1);
    }
    if (source.ends_with('\n')) {
        source.remove_suffix(1);
    }
    return std::string(source);
}

CodeFixture::CodeFixture(std::string_view source) {
    std::string code = Code(source);
    const hostmodel::Selection selection = TakeSelection(code);
    AddComponent(ProjectName, ModuleName, code);

    workspace::ActivePane pane;
    pane.project = workspace_->Find(ProjectName);
    pane.component = pane.project->Find(ModuleName);
    pane.selection = selection;
    workspace_->SetActivePane(pane);
}

void CodeFixture::AddComponent(TextView projectName, TextView componentName, std::string_view source,
                               hostmodel::ComponentType type) {
    workspace::Project* project = workspace_->Find(projectName);
    if (project == nullptr) {
        project = &workspace_->Add(
            std::make_unique<workspace::Project>(Text(projectName), std::filesystem::path()));
    }
    auto component = std::make_unique<workspace::Component>();
    component->name = componentName;
    component->type = type;
    component->module = workspace::Module::FromText(ModuleText(Code(source)));
    project->Add(std::move(component));
}

void CodeFixture::SetDesigner(std::vector<workspace::DesignerControl> controls,
                              hostmodel::ComponentType type) {
    workspace::Component& component = *workspace_->Find(ProjectName)->Find(ModuleName);
    component.type = type;
    component.designer = std::move(controls);
}

workspace::Module& CodeFixture::module() const {
    return *workspace_->Find(ProjectName)->Find(ModuleName)->module;
}

std::string CodeFixture::TextOf(TextView projectName, TextView componentName) const {
    const workspace::Project* project = workspace_->Find(projectName);
    const workspace::Component* component = project == nullptr ? nullptr : project->Find(componentName);
    if (component == nullptr) {
        throw std::invalid_argument("the fixture has no such component");
    }
    Text text = component->module->AllText();
    std::erase(text, u'\r');
    return workspace::ToUtf8(text);
}

}  // namespace lintara::support
