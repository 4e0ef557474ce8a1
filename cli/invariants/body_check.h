// The body of one procedure that was edited, held against the body that it was.
#pragma once

#include "base/text.h"
#include "cli/invariants/code_lines.h"
#include "cli/invariants/edit_rules.h"
#include "cli/invariants/line_comparison.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

struct BodyFault {
    std::size_t line = 0;  // its index in the lines of before
    std::string message;
};

class BodyCheck {
  public:
    // All must outlive this.
    BodyCheck(const CodeLines& before, const CodeLines& after, const EditRules& rules)
        : before_(before), after_(after), rules_(rules) {}

    [[nodiscard]] std::optional<BodyFault> Check(const ProcedureLines& before, const ProcedureLines& after);

  private:
    // A body, or the part of it that is looked at.
    struct Part {
        std::size_t begin = 0;
        std::size_t end = 0;

        [[nodiscard]] std::size_t size() const { return end - begin; }
    };

    [[nodiscard]] std::optional<BodyFault> CheckHandlers(Part b, Part a);
    // Of bodies whose handlers begin at these lines, or that have none: then it is their end.
    [[nodiscard]] std::optional<BodyFault> CheckInsertion(Part b, Part a, std::size_t handlerBefore,
                                                          std::size_t handlerAfter);
    [[nodiscard]] std::optional<BodyFault> CheckRemoval(Part b, Part a, std::size_t handlerBefore,
                                                        std::size_t handlerAfter);
    [[nodiscard]] std::optional<BodyFault> CheckNewHandler(Part b, Part a, std::size_t handlerAfter,
                                                           const Redirection& redirection);
    [[nodiscard]] std::optional<BodyFault> CheckUnhandled(Part b, Part a, std::size_t rewritten);
    // Whether the lines are the same, with `added` of them in front of the first shown one; from `rewritten`
    // on but for their endings.
    [[nodiscard]] std::optional<BodyFault> CompareLines(Part b, Part a, std::size_t added,
                                                        std::size_t rewritten,
                                                        const Redirection& redirection);

    [[nodiscard]] std::optional<BodyFault> CheckCustomInsertion(Part b, Part a) const;
    [[nodiscard]] std::optional<BodyFault> CheckCustomRemoval(Part b, Part a) const;
    // Whether `a` is `b` but for `count` lines more of `b` than of `a` from `at` on.
    [[nodiscard]] std::optional<BodyFault> CompareAround(Part b, Part a, std::size_t at, std::size_t inBefore,
                                                         std::size_t inAfter) const;
    [[nodiscard]] bool IsCustomMarker(const CodeLines& lines, std::size_t index, TextView marker) const;

    // The first line that holds the marker of a handler; the part's end when there is none.
    [[nodiscard]] static std::size_t FindHandler(const CodeLines& lines, Part part);
    [[nodiscard]] static std::size_t HiddenAtBegin(const CodeLines& lines, Part part);
    [[nodiscard]] std::vector<Text> LabelsOfHandlers(Part b, std::size_t handler) const;

    const CodeLines& before_;
    const CodeLines& after_;
    const EditRules& rules_;
};

}  // namespace lintara::cli
