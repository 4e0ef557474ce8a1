// Finds the places of one text in others, in time that grows with the searched text alone, whatever both
// hold: a target of one letter repeated is no slower than any other.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace lintara::workspace {

class TextSearcher {
  public:
    TextSearcher() = default;
    explicit TextSearcher(Text sought);

    // Calls `visit` with the offset of each place at or after `from`, in order and overlapping ones included,
    // until it returns true. An empty text stands at every character.
    template <class Visit>
    void ForEach(TextView text, std::size_t from, Visit visit) const {
        if (sought_.empty()) {
            while (from < text.size() && !visit(from)) {
                ++from;
            }
            return;
        }
        std::size_t matched = 0;
        for (std::size_t at = from; at < text.size(); ++at) {
            if (matched == 0) {
                at = text.find(sought_.front(), at);
                if (at == TextView::npos) {
                    return;
                }
            }
            matched = Advance(matched, text[at]);
            if (matched == sought_.size()) {
                if (visit(at + 1 - matched)) {
                    return;
                }
                matched = borders_[matched - 1];
            }
        }
    }

  private:
    // How many of the first characters of the target end at `next`, when `matched` of them end before it.
    [[nodiscard]] std::size_t Advance(std::size_t matched, char16_t next) const {
        while (matched > 0 && sought_[matched] != next) {
            matched = borders_[matched - 1];
        }
        return sought_[matched] == next ? matched + 1 : 0;
    }

    Text sought_;
    // For each beginning of the target, the length of the longest shorter one that it ends in.
    std::vector<std::uint32_t> borders_;
};

}  // namespace lintara::workspace
