#include "transform/error_handler_statements.h"

#include "base/checked.h"
#include "base/constants.h"
#include "transform/search_and_replace.h"

namespace lintara::transform {

void RedirectHandlerStatements(hostmodel::Globals& globals, TextView componentName, TextView from,
                               TextView to, Line start, Line end) {
    const auto last = CheckedSubtract(end.value(), 1);
    if (!last) {
        return;
    }
    bool found = false;
    SearchAndReplace(globals, componentName, Text(constants::OnErrorGoto).append(from),
                     Text(constants::OnErrorGoto).append(to), start, Line{*last}, {}, found);
}

}  // namespace lintara::transform
