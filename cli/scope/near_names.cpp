#include "cli/scope/near_names.h"

#include "cli/output/terminal_text.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"

#include <algorithm>

namespace lintara::cli {
namespace {

constexpr std::size_t MaxSuggestions = 3;

// How many insertions, deletions and replacements lead from `a` to `b`; `limit` + 1 when more than `limit`.
std::size_t EditDistance(TextView a, TextView b, std::size_t limit) {
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > limit) {
        return limit + 1;
    }
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return std::min(row.back(), limit + 1);
}

struct Candidate {
    std::size_t distance;
    const Text* name;
};

}  // namespace

std::vector<Text> NearNames(TextView wanted, std::span<const Text> names) {
    const Text folded = workspace::FoldCase(wanted);
    const std::size_t limit = folded.size() < 4 ? 1 : std::max<std::size_t>(2, folded.size() / 3);
    std::vector<Candidate> candidates;
    for (const Text& name : names) {
        const Text other = workspace::FoldCase(name);
        // A name of which only the beginning was typed is near, too.
        const bool begun = folded.size() >= 3 && other.starts_with(folded);
        const std::size_t distance = begun ? limit : EditDistance(folded, other, limit);
        if (distance <= limit) {
            candidates.push_back({distance, &name});
        }
    }
    std::ranges::stable_sort(candidates, {}, &Candidate::distance);
    std::vector<Text> near;
    for (const Candidate& candidate : candidates) {
        if (near.size() < MaxSuggestions && std::ranges::find(near, *candidate.name) == near.end()) {
            near.push_back(*candidate.name);
        }
    }
    return near;
}

std::string Suggestion(TextView wanted, std::span<const Text> names) {
    const std::vector<Text> near = NearNames(wanted, names);
    if (near.empty()) {
        return {};
    }
    std::string sentence = " Did you mean ";
    for (std::size_t i = 0; i < near.size(); ++i) {
        if (i > 0) {
            sentence += i + 1 == near.size() ? " or " : ", ";
        }
        sentence += Printable(near[i]);
    }
    return sentence + "?";
}

std::string UnknownName(std::string_view option, std::string_view kind, const std::string& wanted,
                        std::span<const Text> names) {
    return std::string(option) + ": there is no " + std::string(kind) + " '" +
           Printable(std::string_view(wanted)) + "'." + Suggestion(workspace::FromUtf8(wanted), names);
}

}  // namespace lintara::cli
