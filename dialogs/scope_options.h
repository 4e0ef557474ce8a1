// The option buttons by which the user says where a command is to work: in the current procedure, in the
// current component, or in the current project. All dialogs have them, in a row behind a heading.
#pragma once

#include "forms/buttons.h"
#include "forms/container.h"
#include "forms/geometry.h"

#include <array>
#include <cstdint>

namespace lintara::dialogs {

using ScopeOptions = std::array<forms::OptionButton, 3>;

// The panel around them: its height, and the width that they need.
inline constexpr forms::Twips ScopePanelHeight = 405;
inline constexpr forms::Twips ScopePanelWidth = 7455;
inline constexpr forms::Rect ScopeHeadingPlace{120, 90, 1245, 225};

// Makes the three, none of them selected. They cannot be moved: initialise a member with them.
[[nodiscard]] ScopeOptions MakeScopeOptions(forms::Container& panel);

// 1 for the procedure, 2 for the component, else 3.
[[nodiscard]] std::int16_t ChosenScope(const ScopeOptions& options);

// For line numbers and error handlers. Outside any procedure, where the name of the member has no length, the
// component is selected, or the project when there is no line either; what is not possible is disabled. In a
// procedure all stays as it is.
void OfferScopesAtCaret(ScopeOptions& options, std::int16_t memberNameLength, std::int32_t line);

// For custom code: the component is selected whenever there is one, else the project.
void OfferScopes(ScopeOptions& options, bool procedureAvailable, std::int32_t componentAvailable);

}  // namespace lintara::dialogs
