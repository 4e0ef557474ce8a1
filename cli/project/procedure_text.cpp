#include "cli/project/procedure_text.h"

#include "base/statement.h"

namespace lintara::cli {

void ProcedureText::Read(const workspace::Module& module, const ProcedureGroup& group) {
    used_ = 0;
    parts_.clear();
    for (const workspace::ProcedureInfo& procedure : group.reached) {
        Append(module, {procedure.header, procedure.closing + 1}, procedure.body());
    }
}

void ProcedureText::Read(const workspace::Module& module, std::span<const LineRange> ranges) {
    used_ = 0;
    parts_.clear();
    const Line end(module.CountOfLines() + 1);
    for (const LineRange& range : ranges) {
        const LineRange inside{std::min(range.begin, end), std::min(range.end, end)};
        Append(module, inside, inside);
    }
}

void ProcedureText::Append(const workspace::Module& module, LineRange lines, LineRange body) {
    parts_.push_back({lines, body, used_});
    const std::size_t needed = used_ + static_cast<std::size_t>(lines.count());
    if (buffer_.size() < needed) {
        buffer_.resize(needed);
    }
    for (Line line = lines.begin; line < lines.end; ++line) {
        module.ReadLine(line, buffer_[used_++]);
    }
}

std::span<const Text> ProcedureText::lines(const Part& part) const {
    return std::span(buffer_).subspan(part.begin, static_cast<std::size_t>(part.lines.count()));
}

std::span<const Text> ProcedureText::body(const Part& part) const {
    return lines(part).subspan(static_cast<std::size_t>(part.body.begin - part.lines.begin),
                               static_cast<std::size_t>(part.body.count()));
}

bool ProcedureText::PutBack(workspace::Module& module, const Part& part) const {
    bool any = false;
    for (std::size_t i = 0; i < static_cast<std::size_t>(part.body.count()); ++i) {
        any |= PutBack(module, part, i);
    }
    return any;
}

bool ProcedureText::PutBack(workspace::Module& module, const Part& part, std::size_t index) const {
    const Line line = part.body.begin + static_cast<std::int32_t>(index);
    const Text& original = body(part)[index];
    module.ReadLine(line, current_);
    if (current_ == original) {
        return false;
    }
    Attempt(module.RestoreLine(line, original));
    return true;
}

bool ProcedureText::PutBackAll(workspace::Module& module) const {
    bool any = false;
    for (const Part& part : parts_) {
        any |= PutBack(module, part);
    }
    return any;
}

bool ProcedureText::Differs(const workspace::Module& module) const {
    for (const Part& part : parts_) {
        Line line = part.body.begin;
        for (const Text& original : body(part)) {
            module.ReadLine(line, current_);
            ++line;
            if (current_ != original) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace lintara::cli
