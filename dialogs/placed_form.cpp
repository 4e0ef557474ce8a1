#include "dialogs/placed_form.h"

#include "base/statement.h"

#include <algorithm>

namespace lintara::dialogs {

void PlacedForm::Move(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) {
    form_.placed = true;
    if (form_.resizable) {
        width = std::max(width, form_.minimum.width);
        height = std::max(height, form_.minimum.height);
    } else {
        width = form_.Width();
        height = form_.Height();
    }
    Attempt(form_.Move({left, top, width, height}));
}

}  // namespace lintara::dialogs
