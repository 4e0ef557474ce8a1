#include "cli/guards/lines_to_keep.h"

#include "cli/guards/directives.h"
#include "cli/guards/unnumberable_lines.h"
#include "transform/line_numbers.h"
#include "transform/line_text.h"

#include <algorithm>

namespace lintara::cli {
namespace {

constexpr TextView NumberColumn = u"       ";
static_assert(NumberColumn.size() == transform::NumberColumnWidth);

// What insertion does with a line.
enum class Role {
    Numbered,    // has its number
    Unnumbered,  // would get one
    Follower,    // is shifted with the statement above it
    Directive,   // is shifted, wherever it stands
    Label,       // stays: it has a label, or text that looks like a number
    Blank,
};

bool IsBlanksOnly(TextView line) {
    return line.find_first_not_of(u' ') == TextView::npos;
}

// Goes over the lines as the library's insertion does.
std::vector<Role> RolesAsInserted(std::span<const Text> lines, std::span<const NumberedLine> numbered) {
    std::vector<Role> roles;
    roles.reserve(lines.size());
    auto nextNumbered = numbered.begin();
    bool continued = false;
    bool afterSelect = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool isNumbered = nextNumbered != numbered.end() && nextNumbered->index == i;
        if (IsBlanksOnly(lines[i])) {
            roles.push_back(Role::Blank);
            continue;
        }
        if (isNumbered) {
            ++nextNumbered;
            roles.push_back(Role::Numbered);
        } else if (transform::GetLineLabel(lines[i]).isLabel) {
            roles.push_back(Role::Label);
        } else {
            roles.push_back(continued || afterSelect ? Role::Follower : Role::Unnumbered);
        }
        if (!continued) {
            TextView text = TextView(lines[i]).substr(isNumbered ? NumberColumn.size() : 0);
            text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
            afterSelect = text.starts_with(u"Select Case ");
        }
        continued = lines[i].ends_with(u'_');
    }
    return roles;
}

// The same, with the numbers that are blanked after the library's work.
std::vector<Role> RolesOf(std::span<const Text> lines, std::span<const NumberedLine> numbered) {
    std::vector<Role> roles = RolesAsInserted(lines, numbered);
    if (std::ranges::find(roles, Role::Unnumbered) == roles.end()) {
        return roles;
    }
    std::vector<std::size_t> unnumberable;
    FindUnnumberableLines(lines, unnumberable);
    for (const std::size_t index : unnumberable) {
        if (roles[index] == Role::Unnumbered) {
            roles[index] = DirectiveOf(lines[index]) != Directive::None ? Role::Directive : Role::Follower;
        }
    }
    return roles;
}

bool AreMostNumbered(std::span<const Role> roles) {
    return std::ranges::count(roles, Role::Numbered) > std::ranges::count(roles, Role::Unnumbered);
}

// Whether removal would take something off the line that is no number of its own.
bool WouldLose(TextView line, Role role) {
    if (role == Role::Numbered) {
        return false;
    }
    if (role != Role::Label) {
        return line.starts_with(NumberColumn);
    }
    const TextView label = transform::GetLineLabel(line).label;
    // A numeric label that is none of the numbered lines stands on a continuation line.
    return transform::IsNumericLabel(label) || line.substr(label.size() + 1).starts_with(NumberColumn);
}

}  // namespace

std::size_t FirstLineBeyondLimit(std::span<const Text> lines, std::span<const NumberedLine> numbered) {
    if (numbered.size() < 2) {
        return lines.size();
    }
    // The first two numbers tell the step, unless lines were moved since; then there is nothing to tell.
    const auto distance = static_cast<std::int64_t>(numbered[1].index - numbered[0].index);
    const std::int64_t difference = std::int64_t{numbered[1].number} - numbered[0].number;
    if (difference < distance || difference % distance != 0) {
        return lines.size();
    }
    const std::int64_t step = difference / distance;
    const std::int64_t limit = (transform::NumberOffsetLimit + step - 1) / step;
    return std::min(lines.size(), std::max(static_cast<std::size_t>(limit), numbered.back().index + 1));
}

void FindLinesToKeep(std::span<const Text> lines, std::span<const NumberedLine> numbered, LinesToKeep& kept) {
    kept.all.clear();
    kept.unnumbered.clear();
    const std::size_t beyond = FirstLineBeyondLimit(lines, numbered);
    const std::vector<Role> roles = RolesOf(lines, numbered);
    const bool keepsUnnumbered = !AreMostNumbered(std::span(roles).first(beyond));
    bool isStatementKept = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (roles[i] != Role::Follower && roles[i] != Role::Blank) {
            isStatementKept = roles[i] == Role::Unnumbered && keepsUnnumbered;
        }
        if (!WouldLose(lines[i], roles[i])) {
            continue;
        }
        if (roles[i] == Role::Blank || roles[i] == Role::Label || i >= beyond) {
            kept.all.push_back(i);
        } else if (isStatementKept) {
            kept.all.push_back(i);
            kept.unnumbered.push_back(i);
        }
    }
}

}  // namespace lintara::cli
