// What numbering put in front of the lines of a body, held against the rule that says which line gets which
// number. Written out on its own, without the code that numbers.
//
// The number of a line is the base and so many steps as lines stand above it in the body. Blank lines, lines
// that begin with a label, and all from a certain distance on stay as they are. Blanks of the width of a
// number go in front of a line that continues the one above it, of the first line below Select Case, of a
// directive, and of the first Case of a Select Case.
#pragma once

#include "cli/invariants/code_lines.h"
#include "cli/invariants/edit_rules.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace lintara::cli {

// A number, the colon and the blank behind it; the same in blanks. In code units.
inline constexpr std::size_t numberWidth = 7;

class NumberingReader {
  public:
    // `after` must outlive this.
    NumberingReader(const CodeLines& after, const NumberRules& rules) : after_(after), rules_(rules) {}

    struct Reading {
        bool any = false;  // whether any line has the number that the rule gives it
        std::optional<std::size_t> breach = std::nullopt;  // the first line that is not as the rule says
    };
    // Reads the body that is the lines [begin, end).
    [[nodiscard]] Reading Read(std::size_t begin, std::size_t end);
    // Takes the body for one that was not numbered.
    void Forget() { widths_.clear(); }
    // How many code units numbering put in front of a line of the body that was read last.
    [[nodiscard]] std::size_t WidthAt(std::size_t line) const {
        return widths_.empty() ? 0 : widths_[line - begin_];
    }

    // Whether the rule gives none of these lines a number, as they are.
    [[nodiscard]] bool GivesNone(std::size_t begin, std::size_t end);

  private:
    // What the lines that were passed say about the next one.
    struct Walk {
        std::int64_t number = 0;
        std::int64_t step = 0;
        std::int64_t distance = 0;  // from the first number
        bool isContinued = false;
        bool isBelowSelect = false;
        bool awaitsCase = false;  // only comments and blank lines stand between it and Select Case
        bool isBeyond = false;

        void Next() {
            number += step;
            distance += step;
        }
    };
    enum class Form : unsigned char { Kept, Numbered, Shifted, Wrong };

    [[nodiscard]] Walk WalkFrom(std::size_t begin, std::size_t end);
    // The number from which a body was numbered that begins at `begin`: procedures of a property share it.
    [[nodiscard]] std::int64_t ModuleBase(std::size_t begin, std::size_t end);
    void CountShownLines();

    template <class View>
    [[nodiscard]] static Form FormOf(View line, const Walk& walk);
    template <class View>
    static void Pass(View text, bool endsInUnderscore, Walk& walk);
    [[nodiscard]] Form ReadLine(std::size_t line, Walk& walk);

    const CodeLines& after_;
    const NumberRules& rules_;
    std::size_t begin_ = 0;
    std::vector<unsigned char> widths_;
    std::vector<std::int64_t> bodies_;  // where that of each procedure begins, as the IDE counts lines
    Text text_;
};

// Whether the text begins with five digits, a colon and a blank, or with blanks of that width.
template <class View>
[[nodiscard]] bool IsNumberColumn(View text) {
    if (text.size() < numberWidth || text[5] != ':' || text[6] != ' ') {
        return false;
    }
    for (std::size_t i = 0; i < 5; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return false;
        }
    }
    return true;
}

template <class View>
[[nodiscard]] bool IsBlankColumn(View text) {
    if (text.size() < numberWidth) {
        return false;
    }
    for (std::size_t i = 0; i < numberWidth; ++i) {
        if (text[i] != ' ') {
            return false;
        }
    }
    return true;
}

}  // namespace lintara::cli
