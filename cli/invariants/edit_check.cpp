#include "cli/invariants/edit_check.h"

#include "cli/invariants/body_check.h"
#include "cli/invariants/code_lines.h"
#include "cli/invariants/exact_check.h"
#include "cli/invariants/replace_check.h"

#include <algorithm>
#include <utility>

namespace lintara::cli {
namespace {

class EditCheck {
  public:
    EditCheck(const CheckedFile& file, const EditRules& rules)
        : headLines_(file.headLines),
          rules_(rules),
          names_(file.names),
          before_(file.before, file.headLines, file.encoding),
          after_(file.after, file.headLines, file.encoding) {}

    std::vector<Violation> Check(const EditableProcedures& editable) {
        if (before_.head() != after_.head()) {
            violations_.push_back({1, "the head of the file would change"});
        }
        if (rules_.exact) {
            Add(CheckExactEdit(before_, after_, rules_, editable));
        } else if (rules_.replace) {
            Add(CheckReplacement(before_, after_, *rules_.replace));
        } else {
            CheckProcedures(editable);
        }
        return std::move(violations_);
    }

  private:
    void Add(const std::optional<BodyFault>& fault) {
        if (fault) {
            violations_.push_back({static_cast<std::int64_t>(headLines_ + fault->line) + 1, fault->message});
        }
    }

    void CheckProcedures(const EditableProcedures& editable) {
        const auto& before = before_.procedures();
        const auto& after = after_.procedures();
        if (before.size() != after.size()) {
            Add(BodyFault{FirstOtherHeader(),
                          "the number of procedures would be " + std::to_string(after.size()) + " and not " +
                              std::to_string(before.size()) + "; they differ from here on"});
            return;
        }
        std::size_t endBefore = 0;
        std::size_t endAfter = 0;
        auto next = editable.begin();
        BodyCheck bodies(before_, after_, rules_, names_);
        for (std::size_t i = 0; i < before.size(); ++i) {
            const ProcedureLines& b = before[i];
            const ProcedureLines& a = after[i];
            next = std::find_if(next, editable.end(), [i](std::size_t number) { return number >= i; });
            const bool mayChange = next != editable.end() && *next == i;
            // Told once for each procedure: what follows from the first is no news.
            const bool same =
                IsSame({endBefore, b.header}, {endAfter, a.header},
                       "it is in no procedure and would change") &&
                IsSame({b.header, b.body}, {a.header, a.body}, "the header of the procedure would change") &&
                IsSame({b.closing, b.end}, {a.closing, a.end},
                       "the closing line of the procedure would change");
            if (same && mayChange) {
                Add(bodies.Check(b, a));
            } else if (same) {
                (void)IsSame({b.body, b.closing}, {a.body, a.closing},
                             "it is in a procedure that was not to be edited, and would change");
            }
            endBefore = b.end;
            endAfter = a.end;
        }
        (void)IsSame({endBefore, before_.count()}, {endAfter, after_.count()},
                     "it is in no procedure and would change");
    }

    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    // Whether the lines are the same bytes; if not, the first one that is not is told.
    bool IsSame(Range before, Range after, std::string_view message) {
        if (before_.piece(before.begin, before.end) == after_.piece(after.begin, after.end)) {
            return true;
        }
        std::size_t line = before.begin;
        for (std::size_t i = after.begin;
             line < before.end && i < after.end && before_.line(line) == after_.line(i); ++i) {
            ++line;
        }
        const std::size_t last = before_.count() == 0 ? 0 : before_.count() - 1;
        Add(BodyFault{std::min(line, last), std::string(message)});
        return false;
    }

    [[nodiscard]] std::size_t FirstOtherHeader() const {
        const auto isSame = [&](const ProcedureLines& b, const ProcedureLines& a) {
            return before_.piece(b.header, b.body) == after_.piece(a.header, a.body);
        };
        const auto [b, a] = std::ranges::mismatch(before_.procedures(), after_.procedures(), isSame);
        if (b != before_.procedures().end()) {
            return b->header;
        }
        return before_.procedures().empty() ? 0 : before_.procedures().back().header;
    }

    std::size_t headLines_;
    const EditRules& rules_;
    CodeNames names_;
    CodeLines before_;
    CodeLines after_;
    std::vector<Violation> violations_;
};

}  // namespace

std::vector<Violation> CheckEdit(const CheckedFile& file, const EditRules& rules,
                                 const EditableProcedures& editable) {
    return EditCheck(file, rules).Check(editable);
}

}  // namespace lintara::cli
