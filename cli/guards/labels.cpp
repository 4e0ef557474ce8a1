#include "cli/guards/labels.h"

#include "cli/project/logical_lines.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>

namespace lintara::cli {
namespace {

constexpr std::size_t LongestLabel = 255;

// The words that the language keeps for itself, and those that the IDE gives their letter case: in a label of
// that name it would change the letters, too.
constexpr auto ReservedWords = std::to_array<TextView>(
    {u"addressof", u"and",        u"any",        u"as",       u"attribute", u"boolean",    u"byref",
     u"byte",      u"byval",      u"call",       u"case",     u"cbool",     u"cbyte",      u"ccur",
     u"cdate",     u"cdbl",       u"cdec",       u"cint",     u"circle",    u"clng",       u"close",
     u"const",     u"csng",       u"cstr",       u"currency", u"cvar",      u"cverr",      u"date",
     u"debug",     u"decimal",    u"declare",    u"defbool",  u"defbyte",   u"defcur",     u"defdate",
     u"defdbl",    u"defdec",     u"defint",     u"deflng",   u"defobj",    u"defsng",     u"defstr",
     u"defvar",    u"dim",        u"do",         u"double",   u"each",      u"else",       u"elseif",
     u"empty",     u"end",        u"endif",      u"enum",     u"eqv",       u"erase",      u"erl",
     u"err",       u"error",      u"event",      u"exit",     u"explicit",  u"false",      u"for",
     u"friend",    u"function",   u"get",        u"global",   u"gosub",     u"goto",       u"if",
     u"imp",       u"implements", u"in",         u"input",    u"integer",   u"is",         u"lbound",
     u"len",       u"let",        u"lib",        u"like",     u"local",     u"lock",       u"long",
     u"loop",      u"lset",       u"me",         u"mod",      u"new",       u"next",       u"not",
     u"nothing",   u"null",       u"object",     u"on",       u"open",      u"option",     u"optional",
     u"or",        u"paramarray", u"preserve",   u"print",    u"private",   u"property",   u"pset",
     u"public",    u"put",        u"raiseevent", u"redim",    u"rem",       u"resume",     u"return",
     u"rset",      u"scale",      u"seek",       u"select",   u"set",       u"shared",     u"single",
     u"spc",       u"static",     u"step",       u"stop",     u"string",    u"sub",        u"tab",
     u"then",      u"to",         u"true",       u"type",     u"typeof",    u"ubound",     u"unlock",
     u"until",     u"variant",    u"wend",       u"while",    u"with",      u"withevents", u"write",
     u"xor"});

}  // namespace

std::optional<std::string> LabelProblem(TextView label) {
    if (label.empty() || !workspace::IsLetter(label.front())) {
        return "it must begin with a letter";
    }
    if (!std::ranges::all_of(label, workspace::IsWordCharacter)) {
        return "only letters, digits and underscores may stand in it";
    }
    if (label.size() > LongestLabel) {
        return "it may have 255 characters at most";
    }
    if (std::ranges::any_of(ReservedWords, [&](TextView word) { return workspace::IsWord(label, word); })) {
        return "it is a word of the language";
    }
    return std::nullopt;
}

TextView LabelOfLine(TextView logicalLine) {
    std::size_t at = workspace::SkipBlanks(logicalLine);
    std::size_t end = at;
    while (end < logicalLine.size() && workspace::IsDigit(logicalLine[end])) {
        ++end;
    }
    if (end > at && end < logicalLine.size() &&
        (logicalLine[end] == u':' || workspace::IsBlank(logicalLine[end]))) {
        at = workspace::SkipBlanks(logicalLine, end + 1);
    }
    if (at == logicalLine.size() || !workspace::IsLetter(logicalLine[at])) {
        return {};
    }
    end = workspace::SkipWord(logicalLine, at);
    const TextView behind = logicalLine.substr(workspace::SkipBlanks(logicalLine, end));
    const bool isLabel = behind.starts_with(u':') && !behind.starts_with(u":=");
    return isLabel ? logicalLine.substr(at, end - at) : TextView();
}

std::optional<std::size_t> FindLabel(std::span<const Text> lines, TextView label) {
    LogicalLines logical(lines);
    while (logical.Next()) {
        const TextView found = LabelOfLine(logical.text());
        if (!found.empty() && workspace::SameName(found, label)) {
            return logical.first();
        }
    }
    return std::nullopt;
}

std::vector<Text> LabelsIn(std::span<const Text> lines) {
    std::vector<Text> labels;
    LogicalLines logical(lines);
    while (logical.Next()) {
        if (const TextView label = LabelOfLine(logical.text()); !label.empty()) {
            labels.emplace_back(label);
        }
    }
    return labels;
}

}  // namespace lintara::cli
