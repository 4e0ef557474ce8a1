#include "cli/numbers/placed_numbers.h"

#include "cli/project/input_line.h"
#include "cli/scope/procedure_groups.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

namespace lintara::cli {
namespace {

// More digits are no line number.
constexpr std::size_t mostDigits = 10;

class ProcedureNumbers {
  public:
    ProcedureNumbers(const workspace::Module& module, const SourceLines& source,
                     const workspace::ProcedureInfo& procedure)
        : module_(module),
          source_(source),
          procedure_(procedure),
          header_(PlaceOf(InputLine(module, procedure.header))),
          closing_(PlaceOf(InputLine(module, procedure.closing))) {}

    [[nodiscard]] NumberedProcedure Read() const {
        NumberedProcedure result{.name = procedure_.name,
                                 .kind = std::string(KindWord(procedure_)),
                                 .header = header_,
                                 .checksum = source_.ChecksumOf(header_.fileLine, closing_.fileLine)};
        const LineRange body = procedure_.body();
        bool continued = false;
        bool afterOwnLine = false;
        Text text;
        for (Line line = body.begin; line < body.end; ++line) {
            module_.ReadLine(line, text);
            const Line origin = module_.OriginOf(line);
            afterOwnLine |= origin > Line(0);
            const auto number = continued ? std::nullopt : NumberAtStart(text);
            if (number && origin > Line(0)) {
                result.numbers.push_back({*number, PlaceOf(origin), false, line});
            } else if (number) {
                result.numbers.push_back({*number, afterOwnLine ? closing_ : header_, true, line});
            }
            continued = workspace::Continues(text);
        }
        return result;
    }

  private:
    [[nodiscard]] SourcePlace PlaceOf(Line origin) const {
        return {origin, module_.OriginalFileLine(origin)};
    }

    const workspace::Module& module_;
    const SourceLines& source_;
    const workspace::ProcedureInfo& procedure_;
    SourcePlace header_;
    SourcePlace closing_;
};

}  // namespace

std::optional<std::int64_t> NumberAtStart(TextView line) {
    const std::size_t begin = workspace::SkipBlanks(line);
    std::size_t end = begin;
    std::int64_t number = 0;
    while (end < line.size() && line[end] >= u'0' && line[end] <= u'9' && end - begin <= mostDigits) {
        number = number * 10 + (line[end++] - u'0');
    }
    const bool ends = end == line.size() || workspace::IsBlank(line[end]) || line[end] == u':';
    return end > begin && end - begin <= mostDigits && ends ? std::optional(number) : std::nullopt;
}

std::vector<NumberedProcedure> PlacedNumbersOf(const workspace::Module& module, const SourceLines& source) {
    std::vector<NumberedProcedure> numbered;
    for (const workspace::ProcedureInfo& procedure : module.Procedures()) {
        numbered.push_back(ProcedureNumbers(module, source, procedure).Read());
    }
    return numbered;
}

}  // namespace lintara::cli
