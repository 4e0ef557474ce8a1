#include "cli/edits/handler_peers.h"

#include "cli/edits/handler_block.h"
#include "workspace/characters.h"
#include "workspace/parallel.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace lintara::cli {
namespace {

// Stands for every name and number that may differ. No text holds this character.
constexpr char16_t Anything = u'\uFFFF';

// What placeholders may have become in one handler.
struct Names {
    TextView project;
    TextView component;
    TextView member;

    // "cmdSave" of "cmdSave_Click"
    [[nodiscard]] TextView control() const {
        return member.substr(0, std::min(member.rfind(u'_'), member.size()));
    }

    [[nodiscard]] bool Has(TextView word) const {
        const std::array<TextView, 7> names{project, component,   member,     control(),
                                            u"sub",  u"function", u"property"};
        return std::ranges::any_of(names, [&](TextView name) { return workspace::SameName(word, name); });
    }
};

TextView WithoutNumber(TextView line) {
    std::size_t at = 0;
    while (at < line.size() && workspace::IsDigit(line[at])) {
        ++at;
    }
    const bool isNumber = at > 0 && at < line.size() && (line[at] == u':' || workspace::IsBlank(line[at]));
    return line.substr(workspace::SkipBlanks(line, isNumber ? at + 1 : 0));
}

// The line with the names left open, and in its comment, which may tell when it was inserted, the numbers.
void AppendShape(TextView line, const Names& names, Text& shape) {
    line = WithoutNumber(line);
    const std::size_t comment = workspace::CommentStart(line);
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t end = workspace::SkipWord(line, at);
        if (end == at) {
            shape.push_back(line[at++]);
            continue;
        }
        const TextView word = line.substr(at, end - at);
        if (names.Has(word) || (at >= comment && std::ranges::all_of(word, workspace::IsDigit))) {
            shape.push_back(Anything);
        } else {
            shape.append(word);
        }
        at = end;
    }
    shape.push_back(u'\n');
}

Text TextOf(std::span<const Text> block, const Names& names) {
    Text shape;
    for (const Text& line : block) {
        AppendShape(line, names, shape);
    }
    while (shape.ends_with(u"\n\n")) {
        shape.pop_back();
    }
    return shape;
}

std::vector<Text> HandlersIn(const workspace::Project& project, const workspace::Component& component) {
    std::vector<Text> handlers;
    const auto module = component.module->AsLoaded();
    ProcedureText text;
    for (const workspace::ProcedureInfo& procedure : module->Procedures()) {
        const LineRange body = procedure.body();
        text.Read(*module, std::span(&body, 1));
        const auto lines = text.body(text.parts().front());
        if (const auto block = FindHandlerBlock(lines)) {
            handlers.push_back(
                TextOf(lines.subspan(block->begin), {project.name(), component.name, procedure.name}));
        }
    }
    return handlers;
}

}  // namespace

const HandlerPeers::Shape& HandlerPeers::ShapeOf(const EditTarget& target, std::span<const Text> block,
                                                 TextView name) {
    Text text = TextOf(block, {target.project.name(), target.component.name, name});
    const std::scoped_lock lock(mutex_);
    auto known = projects_.find(&target.project);
    if (known == projects_.end()) {
        known = projects_.emplace(&target.project, Survey(target.project)).first;
    }
    return known->second[std::move(text)];
}

HandlerPeers::Shapes HandlerPeers::Survey(const workspace::Project& project) {
    const auto& components = project.components();
    std::vector<std::vector<Text>> handlers(components.size());
    workspace::InParallel(components.size(),
                          [&](std::size_t i) { handlers[i] = HandlersIn(project, *components[i]); });
    Shapes shapes;
    for (std::vector<Text>& ofComponent : handlers) {
        for (Text& handler : ofComponent) {
            ++shapes[std::move(handler)].count;
        }
    }
    return shapes;
}

}  // namespace lintara::cli
