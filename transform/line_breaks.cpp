#include "transform/line_breaks.h"

#include "base/constants.h"

#include <cstddef>

namespace lintara::transform {

LineBreaks LineBreaksIn(TextView text) {
    LineBreaks breaks;
    for (std::size_t found = text.find(constants::LineBreak); found != TextView::npos;
         found = text.find(constants::LineBreak, found + constants::LineBreak.size())) {
        ++breaks.count;
        breaks.last = static_cast<std::int32_t>(found) + 1;
    }
    return breaks;
}

}  // namespace lintara::transform
