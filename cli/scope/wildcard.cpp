#include "cli/scope/wildcard.h"

#include "workspace/characters.h"

#include <algorithm>

namespace lintara::cli {
namespace {

// One star at most is open at any time: a later one makes all choices for an earlier one irrelevant, so a
// pattern of many stars costs no more than name times pattern.
bool MatchesFolded(TextView pattern, TextView name) {
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t star = TextView::npos;
    std::size_t resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            resume = n;
        } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != TextView::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', p) == TextView::npos;
}

}  // namespace

// Several stars in a row match what one does.
Wildcard::Wildcard(TextView pattern) : folded_(workspace::FoldCase(pattern)) {
    const auto [first, last] =
        std::ranges::unique(folded_, [](char16_t a, char16_t b) { return a == u'*' && b == u'*'; });
    folded_.erase(first, last);
}

bool Wildcard::Matches(TextView name) const {
    return MatchesFolded(folded_, workspace::FoldCase(name));
}

}  // namespace lintara::cli
