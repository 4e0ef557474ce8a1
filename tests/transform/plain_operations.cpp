#include "tests/transform/plain_operations.h"

#include "transform/line_text.h"
#include "transform/member_queries.h"
#include "transform/procedure_ranges.h"
#include "transform/templates.h"

#include <algorithm>
#include <memory>
#include <string>

namespace lintara::support {
namespace {

using hostmodel::CodeModule;
using transform::GetProcedureRanges;
using transform::ProcedureRanges;
using ModulePtr = std::shared_ptr<CodeModule>;
using ComponentPtr = std::shared_ptr<hostmodel::VBComponent>;

// One property read of a walk: from an object that is there to one that is there.
template <class To, class From, class Read>
std::shared_ptr<To> Step(const std::shared_ptr<From>& from, Read read) {
    if (from == nullptr) {
        return nullptr;
    }
    const auto to = read(*from);
    return to ? *to : nullptr;
}

ComponentPtr ComponentOf(const std::shared_ptr<hostmodel::VBProject>& project, TextView name) {
    const auto all = Step<hostmodel::VBComponents>(project, [](auto& found) { return found.VBComponents(); });
    return Step<hostmodel::VBComponent>(all, [&](auto& components) { return components.Item(name); });
}

std::shared_ptr<hostmodel::VBE> RootOf(hostmodel::Globals& globals) {
    const auto root = globals.VBE();
    return root ? *root : nullptr;
}

ModulePtr ModuleByNames(hostmodel::Globals& globals, TextView project, TextView component) {
    const auto projects =
        Step<hostmodel::VBProjects>(RootOf(globals), [](auto& vbe) { return vbe.VBProjects(); });
    const auto found = Step<hostmodel::VBProject>(projects, [&](auto& all) { return all.Item(project); });
    return Step<CodeModule>(ComponentOf(found, component), [](auto& owner) { return owner.CodeModule(); });
}

bool Find(const ModulePtr& module, TextView text, std::int32_t start, std::int32_t end, std::int32_t& line) {
    Position from{Line{start}, Column{0}};
    Position to{Line{end}, Column{0}};
    const Result<bool> found = module == nullptr ? Result<bool>(false) : module->Find(text, from, to, {});
    line = from.line.value();
    return found && *found;
}

void InsertLines(const ModulePtr& module, std::int32_t line, TextView text) {
    if (module != nullptr) {
        static_cast<void>(module->InsertLines(Line{line}, text));
    }
}

template <class Treat>
void Ranges(hostmodel::Globals& globals, TextView project, TextView component, TextView procedure,
            ProcedureRanges ranges, Treat treat) {
    treat(ranges.Start1.value(), ranges.End1.value());
    if (ranges.Start2.value() > 0) {
        ranges = GetProcedureRanges(globals, project, component, procedure);
        treat(ranges.Start2.value(), ranges.End2.value());
    }
    if (ranges.Start3.value() > 0) {
        ranges = GetProcedureRanges(globals, project, component, procedure);
        treat(ranges.Start3.value(), ranges.End3.value());
    }
}

const Text begin = u"' TWErrorHandler begin - please do not modify or remove this line";

// The positions of a test lie far from the limits of 32 bits, so that sums need no check here.
bool MayTakeCode(const ProcedureRanges& ranges, const ModulePtr& module) {
    std::int32_t declarations = 0;
    if (module != nullptr) {
        declarations = module->CountOfDeclarationLines().value_or(0);
    }
    return ranges.Start1.value() - 1 > declarations && ranges.Found;
}

Text Marker(const char16_t* word, int id) {
    Text text = Text(u"' TWCustomCode ") + word + u" - please do not modify or remove this line ";
    for (const char digit : std::to_string(id)) {
        text += static_cast<char16_t>(digit);
    }
    return text;
}

}  // namespace

bool PlainSearchAndReplace(hostmodel::Globals& globals, const PlainSearch& search, int mostPasses) {
    bool any = false;
    if (search.startLine > search.endLine) {
        return any;
    }
    const auto project =
        Step<hostmodel::VBProject>(RootOf(globals), [](auto& vbe) { return vbe.ActiveVBProject(); });
    const ComponentPtr component = ComponentOf(project, search.component);
    ModulePtr module;
    Position start{Line{search.startLine}, Column{0}};
    Position end;
    Text oldLine;
    Text newLine;
    for (int pass = 0; component != nullptr && pass < mostPasses; ++pass) {
        if (auto fetched = component->CodeModule()) {
            module = *fetched;
        }
        if (module == nullptr ||
            !module->Find(search.sought, start, end, {.wholeWord = search.wholeWord}).value_or(false)) {
            break;
        }
        any = true;
        const Line line = start.line;
        if (end.line.value() <= search.endLine && line == end.line) {
            oldLine = module->Lines(line, 1).value_or(oldLine);
            const auto length = static_cast<std::int32_t>(oldLine.size());
            const std::int32_t left = start.column.value() - 1;
            const std::int32_t right = length + 1 - end.column.value();
            if (left >= 0 && right >= 0) {
                newLine = oldLine.substr(0, static_cast<std::size_t>(std::min(left, length)));
                newLine += search.replacement;
                newLine += oldLine.substr(static_cast<std::size_t>(std::max(length - right, 0)));
            }
            if (search.goThroughDelete) {
                static_cast<void>(module->DeleteLines(line, 1));
                static_cast<void>(module->InsertLines(line, newLine));
            } else {
                static_cast<void>(module->ReplaceLine(line, newLine));
            }
        }
        start.column = end.column;
        if (search.endLine >= 1 && line.value() > search.endLine) {
            break;
        }
    }
    return any;
}

void PlainInsertHandler(hostmodel::Globals& globals, TextView project, TextView component, TextView procedure,
                        TextView label, TextView code) {
    const ProcedureRanges found = GetProcedureRanges(globals, project, component, procedure);
    const ModulePtr module = ModuleByNames(globals, project, component);
    if (!found.Found) {
        return;
    }
    const auto insert = [&](std::int32_t start, std::int32_t end) {
        std::int32_t line = 0;
        if (Find(module, begin, start, end, line)) {
            return;
        }
        const Text goTo = Text(u"On Error Goto ") + Text(label);
        PlainSearchAndReplace(globals, {component, u"On Error Goto 0", goTo, start, end - 1});
        Text block = begin + u"\r\nExit ";
        block += transform::GetMemberTypeEx(globals, component, procedure);
        block += Text(u"\r\n") + Text(label) + u":\r\n";
        block += transform::ParsePseudoCodeEx({globals}, code, component, procedure);
        InsertLines(module, end, block);
        Text first = module == nullptr ? Text() : module->Lines(Line{start}, 1).value_or(Text());
        if (const auto stripped = transform::StripComment(first)) {
            first = Text(*stripped);
        }
        first = Text(transform::StripLineLabel(first));
        first.erase(0, first.find_first_not_of(u' '));
        first.erase(first.find_last_not_of(u' ') + 1);
        if (first != Text(u"On Error GoTo ") + Text(label)) {
            InsertLines(module, start, Text(u"    ") + goTo);
        }
    };
    Ranges(globals, project, component, procedure, found, insert);
}

void PlainRemoveHandler(hostmodel::Globals& globals, TextView project, TextView component, TextView procedure,
                        TextView label) {
    const ProcedureRanges found = GetProcedureRanges(globals, project, component, procedure);
    const ModulePtr module = ModuleByNames(globals, project, component);
    if (!found.Found) {
        return;
    }
    const auto remove = [&](std::int32_t start, std::int32_t end) {
        std::int32_t line = 0;
        if (!Find(module, begin, start, end, line)) {
            return;
        }
        const Text goTo = Text(u"On Error Goto ") + Text(label);
        PlainSearchAndReplace(globals, {component, goTo, u"On Error Goto 0", start, end - 1});
        static_cast<void>(module->DeleteLines(Line{line}, end - line));
    };
    Ranges(globals, project, component, procedure, found, remove);
}

void PlainInsertCode(hostmodel::Globals& globals, TextView project, TextView component, TextView procedure,
                     TextView code, bool noDelimiters, int where, std::int32_t line, int id) {
    const ProcedureRanges found = GetProcedureRanges(globals, project, component, procedure);
    const ModulePtr module = ModuleByNames(globals, project, component);
    if (!MayTakeCode(found, module)) {
        return;
    }
    const auto insert = [&](std::int32_t start, std::int32_t end) {
        if (where < 1 || where > 3 || (where == 3 && line > end)) {
            return;
        }
        const std::int32_t target = where == 1 ? start : where == 2 ? end : start - 1 + line;
        if (!noDelimiters) {
            InsertLines(module, target, Marker(u"end", id));
        }
        InsertLines(module, target, transform::ParsePseudoCodeEx({globals}, code, component, procedure));
        if (!noDelimiters) {
            InsertLines(module, target, Marker(u"begin", id));
        }
    };
    Ranges(globals, project, component, procedure, found, insert);
}

void PlainRemoveCode(hostmodel::Globals& globals, TextView project, TextView component, TextView procedure,
                     int id) {
    const ProcedureRanges found = GetProcedureRanges(globals, project, component, procedure);
    const ModulePtr module = ModuleByNames(globals, project, component);
    if (!MayTakeCode(found, module)) {
        return;
    }
    const auto remove = [&](std::int32_t start, std::int32_t end) {
        std::int32_t first = 0;
        std::int32_t last = 0;
        const bool begins = Find(module, Marker(u"begin", id), start, end, first);
        const bool ends = Find(module, Marker(u"end", id), start, end, last);
        if (first < last && begins && ends) {
            static_cast<void>(module->DeleteLines(Line{first}, last - first + 1));
        }
    };
    Ranges(globals, project, component, procedure, found, remove);
}

}  // namespace lintara::support
