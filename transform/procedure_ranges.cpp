#include "transform/procedure_ranges.h"

#include "base/checked.h"
#include "base/constants.h"
#include "base/runtime.h"
#include "base/statement.h"
#include "transform/line_text.h"
#include "transform/member_queries.h"
#include "transform/walks.h"

#include <array>
#include <cstdint>
#include <optional>

namespace lintara::transform {
namespace {

using hostmodel::CodeModule;
using hostmodel::MemberKind;
using hostmodel::MemberType;

// The order in which a header is asked for; Get before Let decides which of a property's bodies is range 1.
constexpr std::array KindsOfHeader = {MemberKind::vbext_pk_Proc, MemberKind::vbext_pk_Set,
                                      MemberKind::vbext_pk_Get, MemberKind::vbext_pk_Let};

// What the host is asked with when no kind has the procedure. It has no such kind, so those calls fail.
constexpr MemberKind NoKind{-1};

// A line that no call has assigned yet.
constexpr Line NoLine{-1};

// A header here is taken for a wrong answer and looked up in the member list instead.
constexpr Line FirstLine{1};

struct Header {
    Line line;
    MemberKind kind = NoKind;
};

struct Range {
    Line start;
    Line end;
};

// `line` + 1, unless there is none.
bool Advance(Line& line) {
    const Result<std::int32_t> next = CheckedAdd(line.value(), 1);
    if (next) {
        line = Line{*next};
    }
    return next.has_value();
}

void AssignCodeLocation(Line& line, CodeModule& module, TextView name) {
    const auto members = module.Members();
    if (!members || *members == nullptr) {
        return;
    }
    const auto member = (*members)->Item(name);
    if (member && *member != nullptr) {
        Assign(line, (*member)->CodeLocation());
    }
}

Header FindHeader(CodeModule& module, TextView name) {
    Header header{NoLine, NoKind};
    for (const MemberKind kind : KindsOfHeader) {
        Assign(header.line, module.ProcBodyLine(name, kind));
        if (header.line != NoLine) {
            header.kind = kind;
            break;
        }
    }
    if (header.line == NoLine || header.line == FirstLine) {
        AssignCodeLocation(header.line, module, name);
    }
    return header;
}

// The line after the statement that begins on `line`. A line that cannot be read is not continued; what came
// before it would count as its text otherwise, and a continuation would never end.
Line LineAfterStatement(CodeModule& module, Line line) {
    constexpr TextView Continuation = u" _";
    while (true) {
        const Result<Text> text = module.Lines(line, 1);
        if (!text || !text->ends_with(Continuation) || !Advance(line)) {
            break;
        }
    }
    Advance(line);
    return line;
}

bool IsProcedure(CodeModule& module, TextView name) {
    MemberType type{};
    const auto members = module.Members();
    if (members && *members != nullptr) {
        const auto member = (*members)->Item(name);
        if (member && *member != nullptr) {
            Assign(type, (*member)->Type());
        }
    }
    return type == MemberType::Method || type == MemberType::Property;
}

// How many lines of the procedure's block stand above its header.
std::int32_t LeadOf(CodeModule& module, TextView name, MemberKind kind) {
    Line bodyLine;
    Line startLine;
    Assign(bodyLine, module.ProcBodyLine(name, kind));
    Assign(startLine, module.ProcStartLine(name, kind));
    std::int32_t lead = 0;
    Assign(lead, CheckedSubtract(bodyLine.value(), startLine.value()));
    return lead;
}

// Where the search for the closing line begins: start + count - lead - 1, as many lines below the procedure
// as its header occupies. So the closing line of a short procedure below a long header is taken for this
// one's.
Line FirstProbe(Line start, std::int32_t count, std::int32_t lead) {
    const auto sum = CheckedAdd(start.value(), count);
    const auto difference = Then(sum, [lead](std::int32_t value) { return CheckedSubtract(value, lead); });
    std::int32_t probe = 0;
    Assign(probe, Then(difference, [](std::int32_t value) { return CheckedSubtract(value, 1); }));
    return Line{probe};
}

// Upwards from `probe`, to line 1 at the latest.
Line FindClosingLine(CodeModule& module, Line probe, TextView kindWord) {
    const Text closing = Text(u"End ").append(kindWord);
    for (; probe > FirstLine; --probe) {
        const Result<Text> line = module.Lines(probe, 1);
        if (!line) {
            continue;
        }
        TextView text = *line;
        Assign(text, StripComment(text));
        if (Trim(text) == closing) {
            break;
        }
    }
    return probe;
}

// The beginnings of the headers of a property's other procedures, in the order of ranges 2 and 3.
struct CompanionTexts {
    TextView first;
    TextView second;
};

std::optional<CompanionTexts> CompanionsOf(MemberKind kind) {
    constexpr TextView Get = u"Property Get ";
    constexpr TextView Let = u"Property Let ";
    constexpr TextView Set = u"Property Set ";
    switch (kind) {
        case MemberKind::vbext_pk_Get:
            return CompanionTexts{Let, Set};
        case MemberKind::vbext_pk_Let:
            return CompanionTexts{Get, Set};
        case MemberKind::vbext_pk_Set:
            return CompanionTexts{Let, Get};
        default:
            return std::nullopt;
    }
}

// Finds `text` at or after `from`, to the end of the module.
std::optional<Position> FindWords(CodeModule& module, TextView text, Position from) {
    Position end;
    bool found = false;
    Assign(found,
           module.Find(text, from, end, {.wholeWord = true, .matchCase = false, .patternSearch = false}));
    return found ? std::optional(from) : std::nullopt;
}

// The body of the first procedure whose header holds `headerText`; zeros when there is none.
Range FindCompanion(CodeModule& module, const Text& headerText) {
    const auto header = FindWords(module, headerText, {Line{1}, Column{1}});
    if (!header) {
        return {};
    }
    Range range;
    range.start = LineAfterStatement(module, header->line);
    if (const auto closing = FindWords(module, u"End Property", *header)) {
        range.end = closing->line;
    }
    return range;
}

}  // namespace

ProcedureRanges GetProcedureRanges(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                                   TextView procedureName) {
    ProcedureRanges ranges;
    if (projectName.empty() || componentName.empty() || procedureName.empty()) {
        return ranges;
    }
    const Result<CodeModulePtr> reached = CodeModuleByNames(globals, projectName, componentName);
    if (!reached) {
        return ranges;
    }
    CodeModule& module = **reached;
    std::int32_t declarationLines = 0;
    Assign(declarationLines, module.CountOfDeclarationLines());

    const Header header = FindHeader(module, procedureName);
    const Line start = LineAfterStatement(module, header.line);
    if (start.value() <= declarationLines || !IsProcedure(module, procedureName)) {
        return ranges;
    }
    ranges.Found = true;
    ranges.Start1 = start;
    const std::int32_t lead = LeadOf(module, procedureName, header.kind);
    const TextView kindWord = GetMemberTypeEx(globals, componentName, procedureName);
    std::int32_t count = 0;
    Assign(count, module.ProcCountLines(procedureName, header.kind));
    ranges.End1 = FindClosingLine(module, FirstProbe(start, count, lead), kindWord);

    if (const auto companions = CompanionsOf(header.kind)) {
        const Range first = FindCompanion(module, Text(companions->first).append(procedureName));
        const Range second = FindCompanion(module, Text(companions->second).append(procedureName));
        ranges.Start2 = first.start;
        ranges.End2 = first.end;
        ranges.Start3 = second.start;
        ranges.End3 = second.end;
    }
    return ranges;
}

}  // namespace lintara::transform
