#include "workspace/text_searcher.h"

namespace lintara::workspace {

TextSearcher::TextSearcher(Text sought) : sought_(std::move(sought)), borders_(sought_.size()) {
    std::size_t matched = 0;
    for (std::size_t i = 1; i < sought_.size(); ++i) {
        matched = Advance(matched, sought_[i]);
        borders_[i] = static_cast<std::uint32_t>(matched);
    }
}

}  // namespace lintara::workspace
