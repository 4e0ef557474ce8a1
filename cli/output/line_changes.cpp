#include "cli/output/line_changes.h"

#include "cli/output/edit_graph.h"
#include "workspace/raw_line.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <functional>
#include <span>
#include <utility>

namespace lintara::cli {
namespace {

template <class Lines>
void SkipEqualBeginning(LineChange& part, const Lines& before, const Lines& after) {
    while (part.beforeBegin < part.beforeEnd && part.afterBegin < part.afterEnd &&
           before[part.beforeBegin] == after[part.afterBegin]) {
        ++part.beforeBegin;
        ++part.afterBegin;
    }
}

template <class Lines>
void SkipEqualEnding(LineChange& part, const Lines& before, const Lines& after) {
    while (part.beforeBegin < part.beforeEnd && part.afterBegin < part.afterEnd &&
           before[part.beforeEnd - 1] == after[part.afterEnd - 1]) {
        --part.beforeEnd;
        --part.afterEnd;
    }
}

// A line of each state, of the same text.
struct LinePair {
    std::size_t before = 0;
    std::size_t after = 0;
};

// Of pairs that ascend in `before`, the most that ascend in `after` too.
std::vector<LinePair> MostInOrder(const std::vector<LinePair>& pairs) {
    // For each length the pair that ends a sequence of it earliest, and for each pair the one before it.
    std::vector<std::size_t> ends;
    std::vector<std::size_t> previous(pairs.size());
    const auto afterOf = [&](std::size_t i) { return pairs[i].after; };
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto end = std::ranges::lower_bound(ends, pairs[i].after, {}, afterOf);
        previous[i] = end == ends.begin() ? i : *(end - 1);
        if (end == ends.end()) {
            ends.push_back(i);
        } else {
            *end = i;
        }
    }
    std::vector<LinePair> most(ends.size());
    std::size_t i = ends.empty() ? 0 : ends.back();
    for (std::size_t length = ends.size(); length > 0; --length) {
        most[length - 1] = pairs[i];
        i = previous[i];
    }
    return most;
}

// Gives the same number to lines of the same text.
class TextNumbers {
  public:
    explicit TextNumbers(std::size_t mostTexts) : slots_(std::bit_ceil(2 * mostTexts + 1)) {}

    [[nodiscard]] std::size_t size() const { return texts_.size(); }

    std::uint32_t NumberOf(std::string_view text) {
        const std::size_t hash = std::hash<std::string_view>()(text);
        const std::size_t mask = slots_.size() - 1;
        std::size_t slot = hash & mask;
        while (slots_[slot] != 0) {
            const Entry& entry = texts_[slots_[slot] - 1];
            if (entry.hash == hash && entry.text == text) {
                return slots_[slot] - 1;
            }
            slot = (slot + 1) & mask;
        }
        texts_.push_back({text, hash});
        slots_[slot] = static_cast<std::uint32_t>(texts_.size());
        return slots_[slot] - 1;
    }

  private:
    struct Entry {
        std::string_view text;
        std::size_t hash = 0;
    };
    std::vector<std::uint32_t> slots_;  // 1 + a number
    std::vector<Entry> texts_;
};

// The lines of one state that may have stayed: their texts stand in the other state, too.
struct Candidates {
    std::vector<std::size_t> lines;
    std::vector<std::uint32_t> numbers;  // of their texts
};

// Lines that stand once in each state tell which parts of both belong together; within these the shortest way
// from the one to the other is sought.
class Comparison {
  public:
    std::vector<LineChange> Compare(const FileLines& before, const FileLines& after) {
        LineChange part{0, before.size(), 0, after.size()};
        SkipEqualBeginning(part, before, after);
        SkipEqualEnding(part, before, after);
        rest_ = part;
        FindCandidates(before, after);
        LineChange between{0, before_.lines.size(), 0, after_.lines.size()};
        for (const LinePair& pair : PairsOfUniqueTexts()) {
            ComparePart({between.beforeBegin, pair.before, between.afterBegin, pair.after});
            Stay(pair);
            between.beforeBegin = pair.before + 1;
            between.afterBegin = pair.after + 1;
        }
        ComparePart(between);
        AddChangeUpTo({part.beforeEnd, part.afterEnd});
        return std::move(changes_);
    }

  private:
    struct Counts {
        std::size_t before = 0;
        std::size_t after = 0;
    };

    void FindCandidates(const FileLines& before, const FileLines& after) {
        TextNumbers numbers(rest_.beforeEnd - rest_.beforeBegin + rest_.afterEnd - rest_.afterBegin);
        const auto numbersOf = [&](const FileLines& lines, std::size_t begin, std::size_t end) {
            std::vector<std::uint32_t> result;
            result.reserve(end - begin);
            for (std::size_t i = begin; i < end; ++i) {
                result.push_back(numbers.NumberOf(lines[i]));
            }
            return result;
        };
        const auto beforeNumbers = numbersOf(before, rest_.beforeBegin, rest_.beforeEnd);
        const auto afterNumbers = numbersOf(after, rest_.afterBegin, rest_.afterEnd);
        counts_.resize(numbers.size());
        for (const std::uint32_t number : beforeNumbers) {
            ++counts_[number].before;
        }
        for (const std::uint32_t number : afterNumbers) {
            ++counts_[number].after;
        }
        before_ = CandidatesOf(beforeNumbers, rest_.beforeBegin);
        after_ = CandidatesOf(afterNumbers, rest_.afterBegin);
    }

    [[nodiscard]] Candidates CandidatesOf(const std::vector<std::uint32_t>& numbers,
                                          std::size_t firstLine) const {
        Candidates candidates;
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            if (counts_[numbers[i]].before > 0 && counts_[numbers[i]].after > 0) {
                candidates.lines.push_back(firstLine + i);
                candidates.numbers.push_back(numbers[i]);
            }
        }
        return candidates;
    }

    [[nodiscard]] bool IsUnique(std::uint32_t number) const {
        return counts_[number].before == 1 && counts_[number].after == 1;
    }

    [[nodiscard]] std::vector<LinePair> PairsOfUniqueTexts() const {
        std::vector<std::size_t> places(counts_.size());
        for (std::size_t i = 0; i < after_.numbers.size(); ++i) {
            places[after_.numbers[i]] = i;
        }
        std::vector<LinePair> pairs;
        for (std::size_t i = 0; i < before_.numbers.size(); ++i) {
            if (IsUnique(before_.numbers[i])) {
                pairs.push_back({i, places[before_.numbers[i]]});
            }
        }
        return MostInOrder(pairs);
    }

    // Of a part of the candidates, by their places among these.
    void ComparePart(LineChange part) {
        while (part.beforeBegin < part.beforeEnd && part.afterBegin < part.afterEnd) {
            const EditGraph::Way way = graph_.Search(
                std::span(before_.numbers).subspan(part.beforeBegin, part.beforeEnd - part.beforeBegin),
                std::span(after_.numbers).subspan(part.afterBegin, part.afterEnd - part.afterBegin));
            for (const EditGraph::Run& run : way.stayed) {
                for (std::size_t i = 0; i < run.count; ++i) {
                    Stay({part.beforeBegin + run.before + i, part.afterBegin + run.after + i});
                }
            }
            part.beforeBegin += way.before;
            part.afterBegin += way.after;
        }
    }

    // Of a pair of candidates, by their places among these: what stands above it and was not passed changed.
    void Stay(const LinePair& pair) {
        const LinePair lines{before_.lines[pair.before], after_.lines[pair.after]};
        AddChangeUpTo(lines);
        rest_.beforeBegin = lines.before + 1;
        rest_.afterBegin = lines.after + 1;
    }

    void AddChangeUpTo(const LinePair& lines) {
        if (rest_.beforeBegin < lines.before || rest_.afterBegin < lines.after) {
            changes_.push_back({rest_.beforeBegin, lines.before, rest_.afterBegin, lines.after});
        }
    }

    LineChange rest_;             // of the lines: what was not yet passed
    std::vector<Counts> counts_;  // of each text
    Candidates before_;
    Candidates after_;
    EditGraph graph_;
    std::vector<LineChange> changes_;
};

}  // namespace

FileLines SplitFile(std::string_view bytes, const workspace::Encoding& encoding) {
    constexpr std::size_t usualLineLength = 32;
    FileLines lines;
    lines.reserve(bytes.size() / usualLineLength + 1);
    for (std::size_t at = 0; at < bytes.size();) {
        const workspace::RawLine line = workspace::NextRawLine(bytes, at, encoding);
        lines.push_back(bytes.substr(line.begin, line.next - line.begin));
        at = line.next;
    }
    return lines;
}

std::vector<LineChange> CompareLines(const FileLines& before, const FileLines& after) {
    return Comparison().Compare(before, after);
}

std::size_t CountChangedLines(const std::vector<LineChange>& changes) {
    std::size_t count = 0;
    for (const LineChange& change : changes) {
        count += std::max(change.beforeEnd - change.beforeBegin, change.afterEnd - change.afterBegin);
    }
    return count;
}

}  // namespace lintara::cli
