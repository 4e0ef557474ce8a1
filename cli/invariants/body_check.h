// The body of one procedure that was edited, held against the body that it was.
#pragma once

#include "base/text.h"
#include "cli/invariants/code_lines.h"
#include "cli/invariants/edit_rules.h"
#include "cli/invariants/expected_code.h"
#include "cli/invariants/line_comparison.h"
#include "cli/invariants/numbering_reader.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace lintara::cli {

struct BodyFault {
    std::size_t line = 0;  // its index in the lines of before
    std::string message;
};

class BodyCheck {
  public:
    // All must outlive this.
    BodyCheck(const CodeLines& before, const CodeLines& after, const EditRules& rules,
              const CodeNames& names);

    [[nodiscard]] std::optional<BodyFault> Check(const ProcedureLines& before, const ProcedureLines& after);

  private:
    // A body, or the part of it that is looked at.
    struct Part {
        std::size_t begin = 0;
        std::size_t end = 0;

        [[nodiscard]] std::size_t size() const { return end - begin; }
    };
    // Where the lines that came stand in a body, and how many there are.
    struct Added {
        std::size_t at = 0;
        std::size_t count = 0;
    };

    // The body with the numbers that came taken off; or, when it has none, as it is.
    [[nodiscard]] std::optional<BodyFault> CheckNumbered(Part b, Part a);
    [[nodiscard]] std::optional<BodyFault> CheckHandlers(Part b, Part a, bool numbersMayGo);
    // Of bodies whose handlers begin at these lines, or that have none: then it is their end.
    [[nodiscard]] std::optional<BodyFault> CheckInsertion(Part b, Part a, std::size_t handlerBefore,
                                                          std::size_t handlerAfter, bool numbersMayGo);
    [[nodiscard]] std::optional<BodyFault> CheckRemoval(Part b, Part a, std::size_t handlerBefore,
                                                        std::size_t handlerAfter, bool numbersMayGo);
    [[nodiscard]] std::optional<BodyFault> CheckNewHandler(Part kept, Part a, std::size_t handlerAfter,
                                                           const Redirection& redirection, bool numbersMayGo);
    [[nodiscard]] std::optional<BodyFault> CheckLead(Part kept, Part above, std::size_t added);
    [[nodiscard]] std::optional<BodyFault> CheckUnhandled(Part b, Part a, std::size_t rewritten,
                                                          bool numbersMayGo);
    // Whether the lines are the same, with `added` of them in front of the first shown one; from `rewritten`
    // on but for their endings.
    [[nodiscard]] std::optional<BodyFault> CompareLines(Part b, Part a, std::size_t added,
                                                        std::size_t rewritten, const Redirection& redirection,
                                                        bool numbersMayGo);
    [[nodiscard]] std::optional<BodyFault> CheckNumbersGone(Part b, const NumbersGone& numbers) const;

    [[nodiscard]] std::optional<BodyFault> CheckCustomInsertion(Part b, Part a);
    [[nodiscard]] std::optional<BodyFault> CheckCustomRemoval(Part b, Part a) const;
    // Whether `a` is `b` without the lines that went, and with those that came.
    [[nodiscard]] std::optional<BodyFault> CompareAround(Part b, Part a, Added gone, Added came) const;
    [[nodiscard]] std::size_t FindCustomMarker(Part part, TextView marker) const;
    [[nodiscard]] bool IsCustomMarker(const CodeLines& lines, std::size_t index, TextView marker) const;

    // Whether the lines are `ahead`, those that the template stands for in the procedure at hand, and
    // `behind`.
    [[nodiscard]] bool AreWritten(Part a, std::span<const Text> ahead, std::span<const Text> behind);
    [[nodiscard]] bool AreWritten(Part a, std::span<const Text> ahead, TextView member, bool isControl,
                                  std::span<const Text> behind);
    [[nodiscard]] bool IsWritten(std::size_t line, TextView expected);
    // The name of the first procedure in the module that is called so.
    [[nodiscard]] Text FirstNameLike(TextView name);

    // The first line that holds the marker of a handler; the part's end when there is none.
    [[nodiscard]] static std::size_t FindHandler(const CodeLines& lines, Part part);
    [[nodiscard]] static std::size_t HiddenAtBegin(const CodeLines& lines, Part part);
    [[nodiscard]] std::vector<Text> LabelsOfHandlers(Part b, std::size_t handler);
    [[nodiscard]] Text LabelAt(std::size_t lineOfBefore) const;

    const CodeLines& before_;
    const CodeLines& after_;
    const EditRules& rules_;
    NumberingReader numbering_;
    ExpectedCode code_;
    const ProcedureLines* procedure_ = nullptr;  // of before, at hand
    std::vector<Text> allLabels_;                // of the handlers of before, when they were asked for
    std::unordered_map<Text, Text> firstNames_;  // by folded names, when they were asked for
    Text text_;
};

}  // namespace lintara::cli
