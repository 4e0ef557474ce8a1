// What tests see of a form as a whole: its controls in words, and what is wrong with their places.
#pragma once

#include "forms/form.h"

#include <string>
#include <vector>

namespace lintara::support {

// One line for each control in tab order: its kind, its name, the name of its container unless that is the
// form, and its caption or text as in `CheckBox chkLN in DBPanel3 "Insert line &numbers"`. Line breaks are
// shown as "\r\n". What a user control is made of is left out.
[[nodiscard]] std::vector<std::string> DescribeControls(forms::Form& form);

// One sentence for each visible control that leaves its container or overlaps a neighbour. Shapes may lie
// under other controls, and lines anywhere.
[[nodiscard]] std::vector<std::string> LayoutComplaints(forms::Form& form);

}  // namespace lintara::support
