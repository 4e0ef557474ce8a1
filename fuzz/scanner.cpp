// The search for procedures and the questions about members, on any code: the answers are those that plain
// lines give, whatever stands in the lines, and a host that fails now and then does no more than spoil them.
#include "fuzz/input.h"
#include "fuzz/lines.h"
#include "fuzz/plain_numbers.h"
#include "fuzz/plain_ranges.h"
#include "fuzz/require.h"
#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "transform/line_text.h"
#include "transform/member_queries.h"
#include "transform/procedure_ranges.h"

#include <algorithm>
#include <memory>
#include <set>
#include <string>

namespace lintara::fuzz {
namespace {

using support::ModuleName;
using support::ProjectName;
using transform::ProcedureRanges;

std::string Shown(const ProcedureRanges& ranges) {
    std::string shown = ranges.Found ? "found" : "not found";
    for (const Line line :
         {ranges.Start1, ranges.End1, ranges.Start2, ranges.End2, ranges.Start3, ranges.End3}) {
        shown += ' ' + std::to_string(line.value());
    }
    return shown;
}

class Scanner {
  public:
    explicit Scanner(TextView text) {
        code_.workspace().Find(ProjectName)->Find(ModuleName)->module = workspace::Module::FromText(text);
        reference_ = ReferenceOf(code_.module());
    }

    // Procedures, declared members, and names that no member bears.
    [[nodiscard]] std::set<Text> Names(const Text& other) const {
        std::set<Text> names{other, u"", u"Property"};
        for (const workspace::MemberInfo& member : reference_.Members()) {
            names.insert(member.name);
            names.insert(workspace::FoldCase(member.name));
        }
        return names;
    }

    void CheckRanges(const std::set<Text>& names) {
        const PlainRanges plain(reference_);
        for (const Text& name : names) {
            const auto ranges =
                transform::GetProcedureRanges(*code_.globals(), ProjectName, ModuleName, name);
            RequireSame(Shown(ranges), Shown(plain.Of(name)), "a procedure's lines are found");
            RequireSame(transform::GetMemberTypeEx(*code_.globals(), ModuleName, name),
                        name.empty() ? Text() : plain.KindWord(name), "a procedure's kind is read");
        }
        Require(code_.globals()->liveHandles() == 0, "every handle is given back");
    }

    void CheckCaret(Position caret) {
        workspace::ActivePane pane = *code_.workspace().activePane();
        pane.selection = {caret, caret};
        code_.workspace().SetActivePane(pane);
        const Line line{transform::GetLineNumber(*code_.globals())};
        const Line last{std::max(reference_.CountOfLines(), 1)};
        Require(line == std::min(caret.line, last), "the caret is in the module");
        Text expected;
        for (const workspace::ProcedureInfo& procedure : reference_.Procedures()) {
            if (procedure.start <= line) {
                expected = procedure.name;
            }
        }
        const bool exists = line.value() <= reference_.CountOfLines();
        RequireSame(transform::GetMemberName(*code_.globals()), exists ? expected : Text(),
                    "the caret's member is the last one that begins above it");
        Require(!transform::GetMemberType(*code_.globals()).empty(), "a member has a kind");
        Require(code_.globals()->liveHandles() == 0, "every handle is given back");
    }

    void CheckLines() const {
        for (const Text& line : reference_.lines) {
            const auto label = PlainLabel(line);
            const auto read = transform::GetLineLabel(line);
            Require(read.isLabel == label.has_value(), "a label is seen", ToUtf8(line));
            RequireSame(read.label, label.value_or(u""), "a label is what stands in front of the colon");
            const auto stripped = transform::StripComment(line);
            const auto expected = PlainRanges::WithoutComment(line);
            Require(stripped.has_value() == expected.has_value(), "a cut fits the line", ToUtf8(line));
            RequireSame(stripped.value_or(u""), expected.value_or(u""), "a comment is cut off");
            const std::size_t colon = line.find(u": ");
            const bool hasLabel = colon != Text::npos && line.find(u':') == colon;
            const std::size_t rest = hasLabel ? line.find_first_not_of(u' ', colon + 1) : 0;
            RequireSame(transform::StripLineLabel(line), rest == Text::npos ? Text() : line.substr(rest),
                        "a label is taken off");
        }
    }

    // One call of the host in `every` fails in the way of `fault`.
    void AskFaultyHost(const std::set<Text>& names, std::size_t every, support::Fault fault) {
        const auto plan = std::make_shared<support::FaultPlan>();
        plan->fault = [=](std::size_t index, std::string_view) {
            return index % every == every - 1 ? fault : support::Fault::None;
        };
        support::FaultyGlobals globals(code_.globals(), plan);
        for (const Text& name : names) {
            (void)transform::GetProcedureRanges(globals, ProjectName, ModuleName, name);
            (void)transform::GetMemberTypeEx(globals, ModuleName, name);
        }
        (void)transform::GetMemberName(globals);
        (void)transform::GetMemberType(globals);
        Require(plan->liveHandles == 1, "every handle of a faulty host is given back");
        Require(LinesOf(code_.module()) == reference_.lines, "questions change nothing");
    }

  private:
    support::CodeFixture code_{""};
    support::ReferenceModule reference_;
};

void Scan(Input& input) {
    const auto every = input.Between<std::size_t>(1, 40);
    const auto fault = input.Flag() ? support::Fault::Fails : support::Fault::Empty;
    const Position caret{Line{input.Between<std::int32_t>(1, 80)},
                         Column{input.Between<std::int32_t>(1, 80)}};
    const Text other = input.ShortText(8);
    Scanner scanner(input.RestAsText());
    const std::set<Text> names = scanner.Names(other);
    scanner.CheckRanges(names);
    scanner.CheckCaret(caret);
    scanner.CheckLines();
    scanner.AskFaultyHost(names, every, fault);
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::Scan(input);
    return 0;
}
