// Line numbers in a range of plain lines, written down once more as plainly as can be. It shares no code with
// the library but the language's test for numbers.
#pragma once

#include "base/numbers.h"
#include "base/text.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace lintara::fuzz {

// What stands in front of the first colon, when there is one and no blank in front of it.
[[nodiscard]] inline std::optional<Text> PlainLabel(const Text& line) {
    const std::size_t colon = line.find(u':');
    if (colon == Text::npos || line.substr(0, colon).find(u' ') != Text::npos) {
        return std::nullopt;
    }
    return line.substr(0, colon);
}

inline bool HasPlainNumber(const Text& line) {
    const auto label = PlainLabel(line);
    return label && IsNumeric(*label);
}

class PlainNumbers {
  public:
    // The lines of a range go from `start` up to, not including, `end`.
    PlainNumbers(std::vector<Text>& lines, std::int64_t start, std::int64_t end)
        : lines_(lines), start_(start), end_(end) {}

    void Insert(std::int64_t base, std::int64_t step) {
        bool continued = false;
        bool afterSelect = false;
        const std::int64_t last = (end_ - start_ - 1) * step;
        for (std::int64_t i = 0; step > 0 ? i <= last : step < 0 && i >= last; i += step) {
            Text* const line = At(start_ + i / step);
            if (line == nullptr || Trimmed(*line).empty()) {
                continue;
            }
            if (i >= 55535) {
                return;
            }
            const Text text = *line;
            if (continued || afterSelect) {
                *line = Text(7, u' ') + text;
            } else if (!PlainLabel(text) && IsLong(base + i)) {
                const std::string number = std::to_string(base + i);
                *line = Text(number.begin(), number.end()) + u": " + text;
            }
            if (!continued) {
                afterSelect = Trimmed(text).starts_with(u"Select Case ");
            }
            continued = text.back() == u'_';
        }
    }

    void Remove() {
        bool any = false;
        for (std::int64_t number = start_; number < end_; ++number) {
            any = any || (At(number) != nullptr && HasPlainNumber(*At(number)));
        }
        for (std::int64_t number = start_; any && number < end_; ++number) {
            if (Text* const line = At(number)) {
                RemoveFrom(*line);
            }
        }
    }

  private:
    [[nodiscard]] Text* At(std::int64_t number) const {
        const bool exists = number >= 1 && number <= static_cast<std::int64_t>(lines_.size());
        return exists ? &lines_[static_cast<std::size_t>(number - 1)] : nullptr;
    }

    [[nodiscard]] static Text Trimmed(const Text& text) {
        const std::size_t first = text.find_first_not_of(u' ');
        return first == Text::npos ? Text() : text.substr(first);
    }

    [[nodiscard]] static bool IsLong(std::int64_t value) {
        return value >= std::numeric_limits<std::int32_t>::min() &&
               value <= std::numeric_limits<std::int32_t>::max();
    }

    static void RemoveFrom(Text& line) {
        const Text blanks(7, u' ');
        const auto label = PlainLabel(line);
        if (HasPlainNumber(line)) {
            line.erase(0, line.size() >= 7 ? 7 : 0);
        } else if (label && line.starts_with(*label + u":" + blanks)) {
            line.erase(label->size() + 1, 7);
        } else if (!label && line.starts_with(blanks)) {
            line.erase(0, 7);
        }
    }

    std::vector<Text>& lines_;
    std::int64_t start_;
    std::int64_t end_;
};

}  // namespace lintara::fuzz
