#include "cli/guards/body_guard.h"

#include "cli/guards/directives.h"
#include "cli/project/input_line.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

namespace lintara::cli {
namespace {

// Nearly no line of a body begins with such a letter and is a header; those need no closer look.
bool MayBeginHeader(TextView line) {
    constexpr TextView Initials =
        u"pfgs";  // Public, Private, Property, Friend, Function, Global, Static, Sub
    const std::size_t at = workspace::SkipBlanks(line);
    return at < line.size() && Initials.contains(workspace::Fold(line[at]));
}

// `joined` with the lines that continue it; it is the text of `line`.
Text WithContinuations(Text joined, Line line, const workspace::Module& module) {
    Text next;
    while (workspace::Continues(joined) && line < Line(module.CountOfLines())) {
        module.ReadLine(++line, next);
        joined.pop_back();
        joined += next;
    }
    return joined;
}

}  // namespace

std::optional<RangeMismatch> FindForeignLine(std::span<const Text> body, Line first,
                                             const workspace::Module& module) {
    DirectiveBalance balance;
    bool continued = false;
    Line at = first;
    for (const Text& line : body) {
        const bool continues = workspace::Continues(line);
        if (!continued) {
            balance.Pass(static_cast<std::size_t>(at - first), line);
            if (MayBeginHeader(line) &&
                workspace::ParseHeader(continues ? WithContinuations(line, at, module) : line)) {
                return RangeMismatch{at, InputPlace(module, at) +
                                             " in its body is the header of a procedure, too; headers that "
                                             "share one body, as under #If and #Else, are not edited"};
            }
        }
        continued = continues;
        ++at;
    }
    const auto unbalanced = balance.unbalanced();
    if (!unbalanced) {
        return std::nullopt;
    }
    const Line stray = first + static_cast<std::int32_t>(unbalanced->line);
    const bool opens = unbalanced->directive == Directive::If;
    return RangeMismatch{stray, "the " + std::string(NameOf(unbalanced->directive)) + " at " +
                                    InputPlace(module, stray) +
                                    (opens ? " has no #End If in its body" : " has no #If in its body") +
                                    ", so where it ends depends on what is compiled"};
}

}  // namespace lintara::cli
