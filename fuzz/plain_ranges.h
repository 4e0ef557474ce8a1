// Where the bodies of a procedure lie, worked out from plain lines, step by step, with nothing remembered and
// none of the library's code.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/member_kind.h"
#include "tests/support/reference_module.h"
#include "transform/procedure_ranges.h"
#include "workspace/characters.h"
#include "workspace/module.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace lintara::fuzz {

class PlainRanges {
  public:
    explicit PlainRanges(const support::ReferenceModule& module)
        : module_(module), procedures_(module.Procedures()), members_(module.Members()) {}

    [[nodiscard]] transform::ProcedureRanges Of(const Text& name) const {
        using enum hostmodel::MemberKind;
        std::optional<std::size_t> found;
        for (const auto kind : {vbext_pk_Proc, vbext_pk_Set, vbext_pk_Get, vbext_pk_Let}) {
            found = found ? found : Number(name, kind);
        }
        const workspace::MemberInfo* const member = Member(name);
        std::int32_t header = found ? procedures_[*found].header.value() : -1;
        if ((header == -1 || header == 1) && member != nullptr) {
            header = member->codeLocation.value();
        }
        const std::int32_t start = Behind(header);
        const bool isProcedure = member != nullptr && (member->type == hostmodel::MemberType::Method ||
                                                       member->type == hostmodel::MemberType::Property);
        transform::ProcedureRanges ranges;
        if (name.empty() || start <= module_.CountOfDeclarationLines() || !isProcedure) {
            return ranges;
        }
        ranges.Found = true;
        ranges.Start1 = Line{start};
        ranges.End1 = Line{ClosingLine(start, found, KindWord(name))};
        if (found && procedures_[*found].kind != vbext_pk_Proc) {
            AddCompanions(name, procedures_[*found].kind, ranges);
        }
        return ranges;
    }

    // The line cut as a closing line is; none when more than all of it would go.
    [[nodiscard]] static std::optional<Text> WithoutComment(const Text& line) {
        const std::size_t apostrophe = line.find(u'\'');
        if (apostrophe == Text::npos) {
            return line;
        }
        if (line.size() > 1 && apostrophe + 2 > line.size()) {
            return std::nullopt;
        }
        const Text kept = line.size() == 1 ? Text() : line.substr(0, line.size() - apostrophe - 2);
        return kept.substr(0, kept.find_last_not_of(u' ') + 1);
    }

    // The kind word of a procedure as its header shows it.
    [[nodiscard]] Text KindWord(const Text& name) const {
        const auto found = Number(name, hostmodel::MemberKind::vbext_pk_Proc);
        if (!found) {
            return u"Property";
        }
        const Text& line = At(procedures_[*found].header.value());
        const std::size_t at = line.find(name);
        if (at == Text::npos) {
            return u"?";
        }
        const Text front = workspace::FoldCase(line.substr(0, at + 1));
        return front.find(u"sub") == Text::npos ? u"Function" : u"Sub";
    }

  private:
    [[nodiscard]] std::optional<std::size_t> Number(const Text& name, hostmodel::MemberKind kind) const {
        for (std::size_t i = 0; i < procedures_.size(); ++i) {
            if (procedures_[i].kind == kind && SameName(procedures_[i].name, name)) {
                return i;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] const workspace::MemberInfo* Member(const Text& name) const {
        for (const workspace::MemberInfo& member : members_) {
            if (SameName(member.name, name)) {
                return &member;
            }
        }
        return nullptr;
    }

    [[nodiscard]] static bool SameName(const Text& a, const Text& b) {
        return workspace::FoldCase(a) == workspace::FoldCase(b);
    }

    [[nodiscard]] bool Exists(std::int32_t line) const { return line >= 1 && line <= module_.CountOfLines(); }
    [[nodiscard]] const Text& At(std::int32_t line) const {
        return module_.lines.at(static_cast<std::size_t>(line) - 1);
    }

    // The line behind the statement that begins there.
    [[nodiscard]] std::int32_t Behind(std::int32_t line) const {
        while (Exists(line) && At(line).ends_with(u" _")) {
            ++line;
        }
        return line + 1;
    }

    [[nodiscard]] std::int32_t ClosingLine(std::int32_t start, std::optional<std::size_t> number,
                                           const Text& kindWord) const {
        std::int32_t lead = 0;
        std::int32_t count = 0;
        if (number) {
            lead = procedures_[*number].header - procedures_[*number].start;
            count = module_.CountLinesOf(procedures_, *number);
        }
        std::int32_t probe = start + count - lead - 1;
        while (probe > 1 && !(Exists(probe) && Closes(At(probe), u"End " + kindWord))) {
            --probe;
        }
        return probe;
    }

    [[nodiscard]] static bool Closes(Text line, const Text& words) {
        line = WithoutComment(line).value_or(line);
        const std::size_t first = line.find_first_not_of(u' ');
        const std::size_t last = line.find_last_not_of(u' ');
        return first != Text::npos && line.substr(first, last - first + 1) == words;
    }

    void AddCompanions(const Text& name, hostmodel::MemberKind kind,
                       transform::ProcedureRanges& ranges) const {
        using enum hostmodel::MemberKind;
        const bool isGet = kind == vbext_pk_Get;
        const Text first = kind == vbext_pk_Let ? u"Property Get " : u"Property Let ";
        const Text second = isGet || kind == vbext_pk_Let ? u"Property Set " : u"Property Get ";
        std::tie(ranges.Start2, ranges.End2) = Companion(first + name);
        std::tie(ranges.Start3, ranges.End3) = Companion(second + name);
    }

    [[nodiscard]] std::pair<Line, Line> Companion(const Text& header) const {
        const hostmodel::FindOptions words{.wholeWord = true, .matchCase = false, .patternSearch = false};
        const auto found = module_.Find(header, {Line{1}, Column{1}}, {}, words);
        if (!found) {
            return {};
        }
        const auto closing = module_.Find(u"End Property", found->first, {}, words);
        return {Line{Behind(found->first.line.value())}, closing ? closing->first.line : Line{}};
    }

    const support::ReferenceModule& module_;
    std::vector<workspace::ProcedureInfo> procedures_;
    std::vector<workspace::MemberInfo> members_;
};

}  // namespace lintara::fuzz
