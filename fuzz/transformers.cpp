// All that the library does to code, one operation after the other, on any code: the lines are those that a
// plain reading of what the operation is to do gives, no operation crashes, hangs or leaves a handle, and
// none does on a host that fails now and then.
#include "assistant/lintara.h"
#include "base/constants.h"
#include "base/settings_table.h"
#include "fuzz/input.h"
#include "fuzz/lines.h"
#include "fuzz/plain_numbers.h"
#include "fuzz/require.h"
#include "platform/memory_settings.h"
#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/support/procedure_bodies.h"
#include "tests/transform/plain_operations.h"
#include "workspace/characters.h"
#include "workspace/module.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <vector>

namespace lintara::fuzz {
namespace {

using support::CodeFixture;
using support::ModuleName;
using support::ProjectName;

constexpr std::array<TextView, 5> codes = {u"    Debug.Print \"{MemberName}\"\r\n    Resume Next", u"",
                                           u"dim {MemberType}\r\n", u"x = 1 _",
                                           u"End Sub\r\nSub {ModuleName}{MemberName}()"};
// The second one meets the greatest offset in the sixth line.
constexpr std::array<std::int32_t, 4> steps = {5, 11107, 1, -5};
constexpr std::array<TextView, 5> labels = {u"hErr", u"0", u"", u"h", u"hErr: _"};

enum class Kind { InsertNumbers, RemoveNumbers, InsertHandler, RemoveHandler, InsertCode, RemoveCode };

struct Operation {
    Kind kind = Kind::InsertNumbers;
    std::int32_t base = 0;
    std::int32_t step = 0;
    TextView label;
    TextView code;
    bool noDelimiters = false;
    std::int16_t place = 0;
    std::int32_t line = 0;
    std::int16_t id = 0;
};

Operation OperationIn(Input& input) {
    return {.kind = Kind{input.Between(0, 5)},
            .base = input.Flag() ? 10000 : input.Between<std::int32_t>(-70000, 2147483647),
            .step = input.Flag() ? input.Pick(steps) : input.Between<std::int32_t>(-100, 60000),
            .label = input.Pick(labels),
            .code = input.Pick(codes),
            .noDelimiters = input.Flag(),
            .place = input.Between<std::int16_t>(0, 4),
            .line = input.Between<std::int32_t>(-3, 30),
            .id = input.Between<std::int16_t>(-1, 12)};
}

void Apply(Lintara& library, const Operation& operation, TextView name) {
    switch (operation.kind) {
        case Kind::InsertNumbers:
            return library.LineNumbersInserter(ProjectName, ModuleName, name, operation.base, operation.step);
        case Kind::RemoveNumbers:
            return library.LineNumbersRemover(ProjectName, ModuleName, name);
        case Kind::InsertHandler:
            return library.ErrorHandlerInserter(ProjectName, ModuleName, name, operation.label,
                                                operation.code);
        case Kind::RemoveHandler:
            return library.ErrorHandlerRemover(ProjectName, ModuleName, name);
        case Kind::InsertCode:
            return library.CustomCodeInserter(ProjectName, ModuleName, name, operation.code,
                                              operation.noDelimiters, operation.place, operation.line,
                                              operation.id);
        case Kind::RemoveCode:
            return library.CustomCodeRemover(ProjectName, ModuleName, name, operation.id);
    }
}

// The line numbers are put into and taken out of plain lines, which then have no keyword's case.
void ApplyNumbersPlainly(std::vector<Text>& lines, CodeFixture& code, const Operation& operation,
                         TextView name) {
    const auto ranges = transform::GetProcedureRanges(*code.globals(), ProjectName, ModuleName, name);
    const auto treat = [&](Line start, Line end) {
        PlainNumbers numbers(lines, start.value(), end.value());
        operation.kind == Kind::InsertNumbers ? numbers.Insert(operation.base, operation.step)
                                              : numbers.Remove();
    };
    if (ranges.Found) {
        treat(ranges.Start1, ranges.End1);
    }
    if (ranges.Start2 > Line{0}) {
        treat(ranges.Start2, ranges.End2);
    }
    if (ranges.Start3 > Line{0}) {
        treat(ranges.Start3, ranges.End3);
    }
}

void ApplyPlainly(CodeFixture& code, const Operation& operation, TextView name, TextView label) {
    hostmodel::Globals& globals = *code.globals();
    switch (operation.kind) {
        case Kind::InsertHandler:
            return support::PlainInsertHandler(globals, ProjectName, ModuleName, name, operation.label,
                                               operation.code);
        case Kind::RemoveHandler:
            return support::PlainRemoveHandler(globals, ProjectName, ModuleName, name, label);
        case Kind::InsertCode:
            return support::PlainInsertCode(globals, ProjectName, ModuleName, name, operation.code,
                                            operation.noDelimiters, operation.place, operation.line,
                                            operation.id);
        default:
            return support::PlainRemoveCode(globals, ProjectName, ModuleName, name, operation.id);
    }
}

Text Joined(const std::vector<Text>& lines) {
    Text text;
    for (const Text& line : lines) {
        text.append(line).append(u"\n");
    }
    return text;
}

void RequireSameLines(const std::vector<Text>& actual, const std::vector<Text>& expected) {
    if (actual != expected) {
        RequireSame(Joined(actual), Joined(expected), "an operation does what it is to do");
    }
}

std::vector<Text> Folded(std::vector<Text> lines) {
    for (Text& line : lines) {
        line = workspace::FoldCase(line);
    }
    return lines;
}

bool HoldsBreak(const Text& line) {
    return line.find_first_of(u"\r\n") != Text::npos;
}

// A module that the library edits, and the same one that is edited plainly.
class Editor {
  public:
    Editor(TextView text, TextView label) : label_(label) {
        SetText(code_, text);
        SetText(plain_, text);
        const SettingInfo& setting = *FindSetting(constants::ErrorHandlerLabelKey);
        Require(settings_->Save(setting.name(), label).has_value(), "memory takes a setting");
        library_.oG = code_.globals();
    }

    // One operation on every procedure, one after the other.
    void EditProcedures(const Operation& operation) {
        for (const Text& name : support::ProcedureNames(code_.module())) {
            const auto before = LinesOf(code_.module());
            Apply(library_, operation, name);
            Require(code_.globals()->liveHandles() == 0, "every handle is given back");
            if (operation.kind == Kind::InsertNumbers || operation.kind == Kind::RemoveNumbers) {
                auto lines = before;
                ApplyNumbersPlainly(lines, plain_, operation, name);
                RequireSameLines(Folded(LinesOf(code_.module())), Folded(lines));
                CopyToPlain();
            } else {
                ApplyPlainly(plain_, operation, name, label_);
                RequireSameLines(LinesOf(code_.module()), LinesOf(plain_.module()));
            }
        }
    }

    // The same on a host that fails at one call of `every`: nothing is known of the lines then.
    void EditOnFaultyHost(const Operation& operation, std::size_t every, support::Fault fault) {
        const auto plan = std::make_shared<support::FaultPlan>();
        plan->fault = [=](std::size_t index, std::string_view) {
            return index % every == every - 1 ? fault : support::Fault::None;
        };
        library_.oG = std::make_shared<support::FaultyGlobals>(code_.globals(), plan);
        for (const Text& name : support::ProcedureNames(code_.module())) {
            Apply(library_, operation, name);
            Require(plan->liveHandles == 1, "every handle of a faulty host is given back");
        }
        library_.oG = code_.globals();
        CopyToPlain();
    }

    void Replace(Input& input) {
        constexpr int mostPasses = 400;
        const Text sought = input.ShortText(6);
        const Text replacement = input.ShortText(6);
        support::PlainSearch search{.component = ModuleName,
                                    .sought = sought,
                                    .replacement = replacement,
                                    .startLine = input.Between<std::int32_t>(-1, 60),
                                    .endLine = input.Between<std::int32_t>(-1, 60),
                                    .wholeWord = input.Flag(),
                                    .goThroughDelete = input.Flag()};
        bool found = false;
        library_.SearchAndReplace(ModuleName, sought, replacement, search.startLine, search.endLine,
                                  search.wholeWord, search.goThroughDelete, found);
        const auto plan = std::make_shared<support::FaultPlan>();
        support::FaultyGlobals counted(plain_.globals(), plan);
        const bool expected = support::PlainSearchAndReplace(counted, search, mostPasses);
        Require(found == expected, "what stands there is found");
        if (plan->CountOf("CodeModule.Find") < mostPasses) {
            RequireSameLines(LinesOf(code_.module()), LinesOf(plain_.module()));
        } else {
            CopyToPlain();
        }
        Require(code_.globals()->liveHandles() == 0, "every handle is given back");
    }

  private:
    static void SetText(CodeFixture& code, TextView text) {
        code.workspace().Find(ProjectName)->Find(ModuleName)->module = workspace::Module::FromText(text);
    }

    // A text ends its last line, so that an empty one is a line, too. A line that an edit gave a break is two
    // lines for whoever reads the text.
    void CopyToPlain() {
        const std::vector<Text> lines = LinesOf(code_.module());
        const Text text = code_.module().AllText().append(lines.empty() ? u"" : u"\r\n");
        SetText(plain_, text);
        if (LinesOf(plain_.module()) != lines) {
            Require(std::ranges::any_of(lines, HoldsBreak), "a text keeps its lines");
            SetText(code_, text);
        }
    }

    TextView label_;
    CodeFixture code_{""};
    CodeFixture plain_{""};
    std::shared_ptr<platform::MemorySettings> settings_ = std::make_shared<platform::MemorySettings>();
    Lintara library_{Platform{.settings = settings_}};
};

void Edit(Input& input) {
    const TextView label = input.Pick(labels);
    Editor editor(input.ShortText(800), label);
    for (int edits = 0; edits < 8 && !input.empty(); ++edits) {
        switch (input.Between(0, 6)) {
            case 0:
                editor.Replace(input);
                break;
            case 1: {
                const auto fault = support::Fault{input.Between(1, 3)};
                const auto every = input.Between<std::size_t>(1, 60);
                editor.EditOnFaultyHost(OperationIn(input), every, fault);
                break;
            }
            default:
                editor.EditProcedures(OperationIn(input));
        }
    }
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::Edit(input);
    return 0;
}
