#include "dialogs/scope_options.h"

namespace lintara::dialogs {

using forms::Rect;

namespace {

constexpr Rect PlaceOf(int index) {
    return {1395 + 2025 * index, 75, 1980, 255};
}

}  // namespace

ScopeOptions MakeScopeOptions(forms::Container& panel) {
    return {{{panel, u"optScope(0)", PlaceOf(0), u"Current proced&ure"},
             {panel, u"optScope(1)", PlaceOf(1), u"Current c&omponent"},
             {panel, u"optScope(2)", PlaceOf(2), u"Current p&roject"}}};
}

std::int16_t ChosenScope(const ScopeOptions& options) {
    if (options[0].Value()) {
        return 1;
    }
    return options[1].Value() ? std::int16_t{2} : std::int16_t{3};
}

void OfferScopesAtCaret(ScopeOptions& options, std::int16_t memberNameLength, std::int32_t line) {
    if (memberNameLength != 0) {
        return;
    }
    options[0].SetEnabled(false);
    if (line != 0) {
        options[1].SetValue(true);
    } else {
        options[1].SetEnabled(false);
        options[2].SetValue(true);
    }
}

void OfferScopes(ScopeOptions& options, bool procedureAvailable, std::int32_t componentAvailable) {
    if (!procedureAvailable) {
        options[0].SetEnabled(false);
    }
    if (componentAvailable == 0) {
        options[1].SetEnabled(false);
        options[2].SetValue(true);
    } else {
        options[1].SetValue(true);
    }
}

}  // namespace lintara::dialogs
