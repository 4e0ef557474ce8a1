#include "cli/edits/component_replace.h"

#include "cli/edits/reachable.h"
#include "cli/edits/refusal.h"
#include "cli/edits/size_limit.h"
#include "cli/guards/crowded_lines.h"
#include "cli/guards/inserted_code.h"
#include "cli/output/terminal_text.h"
#include "cli/project/input_line.h"
#include "cli/scope/procedure_groups.h"
#include "hostmodel/code_module.h"
#include "workspace/characters.h"
#include "workspace/component_file.h"

#include <algorithm>
#include <string>

namespace lintara::cli {
namespace {

std::vector<Text> LinesOf(const workspace::Module& module) {
    std::vector<Text> lines(static_cast<std::size_t>(module.CountOfLines()));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        module.ReadLine(Line(static_cast<std::int32_t>(i) + 1), lines[i]);
    }
    return lines;
}

std::string Describe(const workspace::ProcedureInfo& procedure) {
    return std::string(KindWord(procedure)) + " " + Printable(procedure.name);
}

// In a file, the IDE would not show such a line, and would read it as something else than code.
void RequireShownLines(const std::vector<Text>& before, const std::vector<Text>& after) {
    const auto attribute = std::ranges::find_if(after, IsAttributeLine);
    if (std::ranges::count_if(after, IsAttributeLine) > std::ranges::count_if(before, IsAttributeLine)) {
        throw Refusal("--replace: line " + std::to_string(attribute - after.begin() + 1) +
                      " would be an attribute then, which the IDE would hide");
    }
}

void RequireSpace(const workspace::Module& module, Line line, std::size_t matches, std::size_t characters) {
    if (IsCrowded(matches, characters)) {
        throw Refusal("--find: " + InputPlace(module, line) + " has " + std::to_string(characters) +
                      " characters and too many matches among them to replace them all; split it, or leave "
                      "it out with --from and --to");
    }
}

std::string CountOf(std::int32_t lines) {
    return std::to_string(lines) + (lines == 1 ? " line" : " lines");
}

}  // namespace

ComponentReplace::ComponentReplace(workspace::Workspace& workspace,
                                   std::shared_ptr<hostmodel::Globals> globals, ReplaceRequest request)
    : workspace_(workspace),
      request_(std::move(request)),
      addedLines_(static_cast<std::int32_t>(SplitLines(request_.replacement).size()) - 1) {
    lintara_.oG = std::move(globals);
}

ComponentReport ComponentReplace::Edit(const ScopedComponent& scope) {
    CheckScope(scope);
    const workspace::Module& module = *scope.component->module;
    ComponentReport report{.project = scope.project, .component = scope.component};
    workspace_.SetActiveProject(*scope.project);
    if (!request_.exact) {
        CheckLines(module);
    }
    const std::vector<Match> matches = FindMatches(module);
    RequireReadable(*scope.component, matches.size() * request_.replacement.size());
    if (request_.exact) {
        report.found = Replace(scope, LastLine(module));
    } else {
        ReplaceCarefully(scope, matches, report);
    }
    return report;
}

void ComponentReplace::CheckScope(const ScopedComponent& scope) {
    const std::string name = Printable(scope.component->name);
    if (edited_ != nullptr) {
        throw Refusal("--component: several components are named '" + name +
                      "'; in a group of projects, give Project.Component");
    }
    if (!IsReachable(workspace_, scope)) {
        throw Refusal("--component: another component '" + name +
                      "' comes first and would be edited in its place");
    }
    edited_ = scope.component;
}

void ComponentReplace::CheckLines(const workspace::Module& module) const {
    const std::int32_t count = module.CountOfLines();
    const auto require = [&](std::string_view option, std::int32_t line) {
        if (line > count) {
            throw Refusal(std::string(option) + ": there is no line " + std::to_string(line) + " in " +
                          Printable(edited_->name) + "; it has " + CountOf(count));
        }
    };
    if (request_.from > 1) {
        require("--from", request_.from);
    }
    if (request_.to) {
        require("--to", *request_.to);
    }
}

Line ComponentReplace::LastLine(const workspace::Module& module) const {
    return Line(request_.to.value_or(module.CountOfLines()));
}

bool ComponentReplace::Replace(const ScopedComponent& scope, Line last) {
    bool found = false;
    lintara_.SearchAndReplace(scope.component->name, request_.sought, request_.replacement, request_.from,
                              last.value(), request_.wholeWord, false, found);
    return found;
}

void ComponentReplace::ReplaceCarefully(const ScopedComponent& scope, const std::vector<Match>& matches,
                                        ComponentReport& report) {
    workspace::Module& module = *scope.component->module;
    const std::vector<Text> before = LinesOf(module);
    const std::vector<Text> expected = Replaced(module, matches);
    RequireShownLines(before, expected);
    const std::vector<workspace::ProcedureInfo> procedures = module.Procedures();
    // Replacements of several lines push the last lines down, and the end of the search with them.
    const Line last = LastLine(module);
    const bool found = Replace(scope, last + AddedAbove(last + 1, matches));
    RequireResult(module, expected);
    // The library's answer tells of matches behind the last line, too.
    report.found = request_.to ? !matches.empty() : found;
    RemarkLongLines(module, before, report);
    RemarkProcedures(module, procedures, matches, report);
}

std::vector<ComponentReplace::Match> ComponentReplace::FindMatches(const workspace::Module& module) const {
    std::vector<Match> matches;
    const Line last = LastLine(module);
    Position begin{Line(request_.from), Column(1)};
    Position end;
    const auto find = [&] {
        end = {};
        return module.Find(request_.sought, begin, end, {.wholeWord = request_.wholeWord});
    };
    Line current(0);
    std::size_t length = 0;       // of the current line
    std::size_t firstOfLine = 0;  // the first match on it
    Text text;
    while (begin.line <= last && find() && begin.line <= last) {
        if (begin.line == end.line) {
            if (current != begin.line) {
                current = begin.line;
                module.ReadLine(current, text);
                length = text.size();
                firstOfLine = matches.size();
            }
            matches.push_back({begin.line, static_cast<std::size_t>(begin.column.value()) - 1,
                               static_cast<std::size_t>(end.column.value()) - 1});
            RequireSpace(module, current, matches.size() - firstOfLine, length);
        }
        begin = end;
    }
    return matches;
}

std::vector<Text> ComponentReplace::Replaced(const workspace::Module& module,
                                             const std::vector<Match>& matches) const {
    std::vector<Text> replaced;
    auto match = matches.begin();
    Text line;
    for (Line at(1); at <= Line(module.CountOfLines()); ++at) {
        module.ReadLine(at, line);
        Text result;
        std::size_t copied = 0;
        for (; match != matches.end() && match->line == at; ++match) {
            result.append(line, copied, match->begin - copied).append(request_.replacement);
            copied = match->end;
        }
        result.append(line, copied);
        std::ranges::move(SplitLines(result), std::back_inserter(replaced));
    }
    return replaced;
}

std::int32_t ComponentReplace::AddedAbove(Line line, const std::vector<Match>& matches) const {
    const auto above = std::ranges::lower_bound(matches, line, {}, &Match::line) - matches.begin();
    return static_cast<std::int32_t>(above) * addedLines_;
}

// The IDE gives keywords in changed lines their letter case; nothing else may differ.
void ComponentReplace::RequireResult(const workspace::Module& module,
                                     const std::vector<Text>& expected) const {
    const std::vector<Text> result = LinesOf(module);
    const auto [inResult, inExpected] = std::ranges::mismatch(result, expected, workspace::SameName);
    if (inResult == result.end() && inExpected == expected.end()) {
        return;
    }
    const Line line(static_cast<std::int32_t>(inResult - result.begin()) + 1);
    throw Refusal("--replace: at " + InputPlace(module, line) +
                  ", the search would go on inside the replacement, or pass over a text that it moved, and "
                  "not replace each occurrence once; use another replacement, --from and --to, or --exact");
}

void ComponentReplace::RemarkLongLines(const workspace::Module& module, const std::vector<Text>& before,
                                       ComponentReport& report) const {
    Text line;
    for (Line at(1); at <= Line(module.CountOfLines()); ++at) {
        module.ReadLine(at, line);
        if (line.size() <= workspace::longestLine) {
            continue;
        }
        const Line input = InputLine(module, at);
        if (before[static_cast<std::size_t>(input.value()) - 1].size() <= workspace::longestLine) {
            report.remarks.push_back({"line-too-long", input,
                                      InputPlace(module, at) + " is longer now than the " +
                                          std::to_string(workspace::longestLine) +
                                          " characters that the IDE accepts; split it"});
        }
    }
}

void ComponentReplace::RemarkProcedures(const workspace::Module& module,
                                        const std::vector<workspace::ProcedureInfo>& before,
                                        const std::vector<Match>& matches, ComponentReport& report) const {
    // A replacement in the line itself may put lines above or below what stands there now.
    const auto isMovedTo = [&](Line from, Line to) {
        return to >= from + AddedAbove(from, matches) && to <= from + AddedAbove(from + 1, matches);
    };
    const std::vector<workspace::ProcedureInfo> now = module.Procedures();
    const auto [a, b] = std::ranges::mismatch(
        before, now, [&](const workspace::ProcedureInfo& was, const workspace::ProcedureInfo& is) {
            return was.name == is.name && was.kind == is.kind && was.isFunction == is.isFunction &&
                   was.closed == is.closed && isMovedTo(was.header, is.header) &&
                   isMovedTo(was.closing, is.closing);
        });
    if (a == before.end() && b == now.end()) {
        return;
    }
    const Line at = a != before.end() ? a->header : InputLine(module, b->header);
    std::string message = "the replacement changes the procedures: ";
    if (a == before.end()) {
        message += Describe(*b) + " is a new one";
    } else if (b == now.end()) {
        message += Describe(*a) + " is none any more";
    } else if (Describe(*a) == Describe(*b)) {
        message += Describe(*a) + " ends at another place";
    } else {
        message += "where " + Describe(*a) + " was, there is " + Describe(*b) + " now";
    }
    report.remarks.push_back({"procedures-changed", at, std::move(message)});
}

}  // namespace lintara::cli
