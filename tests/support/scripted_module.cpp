#include "tests/support/scripted_module.h"

#include "hostmodel/vbe.h"
#include "workspace/encoding.h"

#include <algorithm>
#include <string>
#include <utility>

namespace lintara::support {
namespace {

std::unexpected<HostError> NotScripted() {
    return Failure(ErrorNumber::HostFailure, "the test has not scripted this");
}

template <class Answer, class... Arguments>
auto Ask(const Answer& answer, Arguments&&... arguments) -> decltype(answer(arguments...)) {
    if (!answer) {
        return NotScripted();
    }
    return answer(std::forward<Arguments>(arguments)...);
}

class ScriptedMember : public hostmodel::Member {
  public:
    explicit ScriptedMember(const ScriptedModule& module) : module_(module) {}
    Result<Line> CodeLocation() override {
        return module_.memberLocation ? Result<Line>(*module_.memberLocation) : NotScripted();
    }
    Result<hostmodel::MemberType> Type() override {
        return module_.memberType ? Result<hostmodel::MemberType>(*module_.memberType) : NotScripted();
    }

  private:
    const ScriptedModule& module_;
};

class ScriptedMembers : public hostmodel::Members {
  public:
    explicit ScriptedMembers(const ScriptedModule& module) : module_(module) {}
    Result<std::shared_ptr<hostmodel::Member>> Item(TextView) override {
        if (!module_.memberLocation && !module_.memberType) {
            return NotScripted();
        }
        return std::make_shared<ScriptedMember>(module_);
    }
    Result<std::shared_ptr<hostmodel::Member>> Item(std::int32_t) override { return NotScripted(); }

  private:
    const ScriptedModule& module_;
};

using CodeModulePtr = std::shared_ptr<hostmodel::CodeModule>;

class ScriptedCodePane : public hostmodel::CodePane {
  public:
    ScriptedCodePane(CodeModulePtr module, Position caret) : module_(std::move(module)), caret_(caret) {}
    Result<CodeModulePtr> CodeModule() override { return module_; }
    Result<hostmodel::Selection> GetSelection() override { return hostmodel::Selection{caret_, caret_}; }
    Result<Line> TopLine() override { return Line{1}; }
    Result<std::int32_t> CountOfVisibleLines() override { return 25; }

  private:
    CodeModulePtr module_;
    Position caret_;
};

// The objects between the services object and the module, each of which leads to the next whatever is asked.
class ScriptedComponent : public hostmodel::VBComponent {
  public:
    explicit ScriptedComponent(std::shared_ptr<ScriptedModule> module) : module_(std::move(module)) {}
    Result<Text> Name() override { return Text(u"Component"); }
    Result<hostmodel::ComponentType> Type() override { return hostmodel::ComponentType::Module; }
    Result<CodeModulePtr> CodeModule() override { return module_; }
    Result<std::shared_ptr<hostmodel::Dispatch>> Designer() override { return module_->designer; }

  private:
    std::shared_ptr<ScriptedModule> module_;
};

class ScriptedComponents : public hostmodel::VBComponents {
  public:
    explicit ScriptedComponents(std::shared_ptr<ScriptedModule> module) : module_(std::move(module)) {}
    Result<std::shared_ptr<hostmodel::VBComponent>> Item(TextView) override {
        return std::make_shared<ScriptedComponent>(module_);
    }

  private:
    std::shared_ptr<ScriptedModule> module_;
};

class ScriptedProject : public hostmodel::VBProject {
  public:
    explicit ScriptedProject(std::shared_ptr<ScriptedModule> module) : module_(std::move(module)) {}
    Result<Text> Name() override { return Text(u"Project"); }
    Result<std::shared_ptr<hostmodel::VBComponents>> VBComponents() override {
        return std::make_shared<ScriptedComponents>(module_);
    }

  private:
    std::shared_ptr<ScriptedModule> module_;
};

class ScriptedProjects : public hostmodel::VBProjects {
  public:
    explicit ScriptedProjects(std::shared_ptr<ScriptedModule> module) : module_(std::move(module)) {}
    Result<std::shared_ptr<hostmodel::VBProject>> Item(TextView) override {
        return std::make_shared<ScriptedProject>(module_);
    }

  private:
    std::shared_ptr<ScriptedModule> module_;
};

class ScriptedVBE : public hostmodel::VBE {
  public:
    explicit ScriptedVBE(std::shared_ptr<ScriptedModule> module) : module_(std::move(module)) {}
    Result<std::shared_ptr<hostmodel::VBProjects>> VBProjects() override {
        return std::make_shared<ScriptedProjects>(module_);
    }
    Result<std::shared_ptr<hostmodel::VBProject>> ActiveVBProject() override {
        return std::make_shared<ScriptedProject>(module_);
    }
    Result<std::shared_ptr<hostmodel::CodePane>> ActiveCodePane() override {
        if (!module_->caret) {
            return NotScripted();
        }
        return std::make_shared<ScriptedCodePane>(module_, *module_->caret);
    }

  private:
    std::shared_ptr<ScriptedModule> module_;
};

class ScriptedGlobals : public hostmodel::Globals {
  public:
    using DispatchPtr = std::shared_ptr<hostmodel::Dispatch>;

    explicit ScriptedGlobals(std::shared_ptr<ScriptedModule> module) : module_(std::move(module)) {}
    Result<std::shared_ptr<hostmodel::VBE>> VBE() override { return std::make_shared<ScriptedVBE>(module_); }
    Result<Text> ComputerName() override { return NotScripted(); }
    Result<Text> UserName() override { return NotScripted(); }
    Result<Text> TokenBefore(TextView text, TextView separator) override {
        return Ask(module_->tokenBefore, text, separator);
    }
    Result<Text> CodeDbPath() override { return NotScripted(); }
    Result<void> SetCodeDbPath(TextView) override { return NotScripted(); }
    Result<std::shared_ptr<hostmodel::Database>> CodeDb() override { return NotScripted(); }
    Result<void> SetCodeDb(std::shared_ptr<hostmodel::Database>) override { return NotScripted(); }
    Result<DispatchPtr> HostForm() override { return NotScripted(); }
    Result<DispatchPtr> ProjectsData() override { return NotScripted(); }
    Result<DispatchPtr> AddInHost() override { return NotScripted(); }
    Result<Text> HistSeparator() override { return NotScripted(); }
    Result<Text> HistCurrentKey() override { return NotScripted(); }
    Result<Text> HistSelKey() override { return NotScripted(); }
    Result<void> SetHistSelKey(TextView) override { return NotScripted(); }
    Result<Text> HistSelObject() override { return NotScripted(); }
    Result<void> SetHistSelObject(TextView) override { return NotScripted(); }
    Result<void> LoadWindowState(hostmodel::PlacedWindow&) override { return NotScripted(); }
    Result<void> SaveWindowState(const hostmodel::PlacedWindow&) override { return NotScripted(); }

  private:
    std::shared_ptr<ScriptedModule> module_;
};

}  // namespace

ScriptedModule::ScriptedModule(std::string_view source) {
    while (!source.empty()) {
        const std::size_t end = std::min(source.find('\n'), source.size());
        lines.push_back(workspace::FromUtf8(source.substr(0, end)));
        source.remove_prefix(std::min(end + 1, source.size()));
    }
}

std::string ScriptedModule::text() const {
    std::string text;
    for (const Text& line : lines) {
        text += workspace::ToUtf8(line) + '\n';
    }
    return text;
}

Result<std::shared_ptr<hostmodel::VBComponent>> ScriptedModule::Parent() {
    return NotScripted();
}

Result<Text> ScriptedModule::Lines(Line startLine, std::int32_t count) {
    ++reads;
    if (lineAt) {
        return lineAt(startLine);
    }
    const std::int64_t index = std::int64_t{startLine.value()} - 1;
    if (count != 1 || index < 0 || index >= static_cast<std::int64_t>(lines.size())) {
        return NotScripted();
    }
    return lines[static_cast<std::size_t>(index)];
}

Result<void> ScriptedModule::InsertLines(Line, TextView) {
    return NotScripted();
}

Result<void> ScriptedModule::DeleteLines(Line, std::int32_t) {
    return NotScripted();
}

Result<void> ScriptedModule::ReplaceLine(Line line, TextView text) {
    const std::int64_t index = std::int64_t{line.value()} - 1;
    if (index < 0 || index >= static_cast<std::int64_t>(lines.size())) {
        return NotScripted();
    }
    lines[static_cast<std::size_t>(index)] = text;
    ++replacements;
    return {};
}

Result<Line> ScriptedModule::ProcStartLine(TextView name, MemberKind kind) {
    return Ask(procStartLine, name, kind);
}

Result<Line> ScriptedModule::ProcBodyLine(TextView name, MemberKind kind) {
    return Ask(procBodyLine, name, kind);
}

Result<std::int32_t> ScriptedModule::ProcCountLines(TextView name, MemberKind kind) {
    return Ask(procCountLines, name, kind);
}

Result<Text> ScriptedModule::ProcOfLine(Line line, MemberKind& kind) {
    return Ask(procOfLine, line, kind);
}

Result<std::int32_t> ScriptedModule::CountOfDeclarationLines() {
    return declarationLines;
}

Result<std::shared_ptr<hostmodel::Members>> ScriptedModule::Members() {
    return std::make_shared<ScriptedMembers>(*this);
}

Result<bool> ScriptedModule::Find(TextView target, Position& start, Position& end,
                                  hostmodel::FindOptions options) {
    return Ask(find, target, start, end, options);
}

std::shared_ptr<hostmodel::Globals> GlobalsOver(std::shared_ptr<ScriptedModule> module) {
    return std::make_shared<ScriptedGlobals>(std::move(module));
}

}  // namespace lintara::support
