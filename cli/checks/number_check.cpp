#include "cli/checks/number_check.h"

#include "cli/guards/existing_numbers.h"

#include <algorithm>
#include <map>

namespace lintara::cli {
namespace {

using workspace::ProcedureInfo;

NumberOptions Renumbering(NumberOptions numbers) {
    numbers.renumber = true;
    return numbers;
}

Line LineAt(const ProcedureText::Part& part, std::size_t index) {
    return part.body.begin + static_cast<std::int32_t>(index);
}

std::string Counted(std::size_t count, std::string_view one, std::string_view several) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : several);
}

// How many lines there are of a sort, and the first of them.
struct Tally {
    std::size_t count = 0;
    std::size_t first = 0;

    void Add(std::size_t index) {
        first = count == 0 ? index : first;
        ++count;
    }
};

}  // namespace

NumberCheck::NumberCheck(NumberOptions numbers, Findings& findings)
    : ProcedureCheck(findings), insertion_(Renumbering(numbers)) {}

std::expected<bool, Skip> NumberCheck::Apply(const EditTarget& target, const ProcedureGroup& group,
                                             ComponentReport& report) {
    text_.Read(target.module, group);
    const std::size_t parts = text_.parts().size();
    std::vector<Numbers> before;
    for (std::size_t i = 0; i < parts; ++i) {
        const ProcedureText::Part& part = text_.parts()[i];
        before.push_back(NumbersAtStartOf(text_.body(part)));
        FindDuplicates(target, group.reached[i], part, before[i]);
    }
    const auto inserted = insertion_.Apply(target, group, report);
    if (!inserted) {
        return inserted;
    }
    after_.Read(target.module, group);
    for (std::size_t i = 0; i < parts; ++i) {
        const ProcedureText::Part& part = text_.parts()[i];
        Compare(target, group.reached[i], part, before[i], NumbersAtStartOf(after_.body(after_.parts()[i])));
    }
    text_.PutBackAll(target.module);
    return false;
}

void NumberCheck::FindDuplicates(const EditTarget& target, const ProcedureInfo& procedure,
                                 const ProcedureText::Part& part, const Numbers& numbers) {
    std::map<std::int64_t, std::size_t> seen;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (!numbers[i]) {
            continue;
        }
        const auto [first, isNew] = seen.try_emplace(*numbers[i], i);
        if (!isNew) {
            Find(procedure, "duplicate-number", target.Input(LineAt(part, i)),
                 "the number " + std::to_string(*numbers[i]) + " stands at " +
                     target.Place(LineAt(part, first->second)) + ", too");
        }
    }
}

void NumberCheck::Compare(const EditTarget& target, const ProcedureInfo& procedure,
                          const ProcedureText::Part& part, const Numbers& before, const Numbers& after) {
    Tally missing;
    Tally stale;
    bool any = false;
    for (std::size_t i = 0; i < before.size(); ++i) {
        any |= before[i].has_value();
        if (before[i] != after[i]) {
            (before[i] ? stale : missing).Add(i);
        }
    }
    if (!any && missing.count > 0) {
        Find(procedure, "no-numbers", target.Input(procedure.header), "has no line numbers");
        return;
    }
    if (missing.count > 0) {
        Find(procedure, "incomplete-numbers", target.Input(LineAt(part, missing.first)),
             Counted(missing.count, "line has", "lines have") + " no number while others have");
    }
    if (stale.count > 0) {
        const std::optional<std::int64_t> wanted = after[stale.first];
        Find(procedure, "stale-number", target.Input(LineAt(part, stale.first)),
             Counted(stale.count, "number is", "numbers are") + " not what insertion writes now; " +
                 std::to_string(*before[stale.first]) +
                 (wanted ? " would be " + std::to_string(*wanted) : " would not be there"));
    }
}

std::expected<bool, Skip> NumberAbsenceCheck::Apply(const EditTarget& target, const ProcedureGroup& group,
                                                    ComponentReport& report) {
    text_.Read(target.module, group);
    const auto removed = removal_.Apply(target, group, report);
    if (!removed || !*removed) {
        return removed;
    }
    text_.PutBackAll(target.module);
    for (std::size_t i = 0; i < text_.parts().size(); ++i) {
        const ProcedureText::Part& part = text_.parts()[i];
        std::vector<NumberedLine> numbered;
        FindNumberedLines(text_.body(part), numbered);
        if (!numbered.empty()) {
            Find(group.reached[i], "numbers-present", target.Input(LineAt(part, numbered.front().index)),
                 "has line numbers on " + Counted(numbered.size(), "line", "lines"));
        }
    }
    return false;
}

}  // namespace lintara::cli
