// Code templates: texts with placeholders such as "{MemberName}", which are expanded into code for one place
// in the user's project, and real code turned back into a template. Hosts call the three operations through
// `Lintara`; the inserters of error handlers and custom code expand their templates here.
//
// There is no escape for a brace: any text in braces that is no placeholder is ordinary text. A value that is
// empty, or that the host fails to give, leaves its placeholder where it is. Nothing here changes code.
#pragma once

#include "base/clock.h"
#include "base/text.h"
#include "hostmodel/globals.h"

namespace lintara::transform {

// Where the values come from. Without a clock or without the regional texts, date and time have no value.
struct TemplateSources {
    hostmodel::Globals& globals;
    Clock* clock = nullptr;
    RegionalTexts* regional = nullptr;
};

// The template expanded for the member under the caret of the active code window; unchanged without a window.
[[nodiscard]] Text ParsePseudoCode(const TemplateSources& sources, TextView pseudoCode);

// The template expanded for a member of the active project. An empty name leaves the placeholders that need
// it.
[[nodiscard]] Text ParsePseudoCodeEx(const TemplateSources& sources, TextView pseudoCode,
                                     TextView componentName, TextView memberName);

// The code with the current values replaced by their placeholders, wherever their text occurs, inside longer
// words too. Date and time are not sought. Unchanged without an active code window.
[[nodiscard]] Text GeneratePseudoCode(const TemplateSources& sources, TextView code);

// `text` with every occurrence of `find` replaced, from left to right; the replacements are not searched
// again. An empty `find` or `replacement` changes nothing: a value that is missing never deletes anything.
[[nodiscard]] Text ReplaceAll(TextView text, TextView find, TextView replacement);

}  // namespace lintara::transform
