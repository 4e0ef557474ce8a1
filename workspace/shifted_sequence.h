// A sequence of things that stand on lines in ascending order, all of which move when lines come or go above
// them. The move is remembered as one pending shift from some element on and is applied only as far as the
// edits pass by, so a walk of edits from front to back moves each element once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace lintara::workspace {

// T has a member `void ShiftBy(std::int32_t lines)`.
template <class T>
class ShiftedSequence {
  public:
    ShiftedSequence() = default;
    explicit ShiftedSequence(std::vector<T> elements) : elements_(std::move(elements)) {}

    [[nodiscard]] std::size_t size() const { return elements_.size(); }
    [[nodiscard]] bool empty() const { return elements_.empty(); }

    // The element as it is stored: its lines lack PendingShift(i).
    [[nodiscard]] const T& Stored(std::size_t i) const { return elements_[i]; }
    [[nodiscard]] std::int32_t PendingShift(std::size_t i) const { return i >= shiftFrom_ ? shift_ : 0; }

    // How many elements come before the first for whose number `holds` is false; it must hold for none after.
    template <class Predicate>
    [[nodiscard]] std::size_t CountWhile(Predicate holds) const {
        std::size_t begin = 0;
        std::size_t end = size();
        while (begin < end) {
            const std::size_t middle = begin + (end - begin) / 2;
            if (holds(middle)) {
                begin = middle + 1;
            } else {
                end = middle;
            }
        }
        return begin;
    }

    // The element for changes; its lines must not need a shift, so it lies below the place of the last
    // MoveShiftTo.
    [[nodiscard]] T& Settled(std::size_t i) { return elements_[i]; }

    // Applies the pending shift to the elements below `i` and to no other.
    void MoveShiftTo(std::size_t i) {
        if (shift_ != 0) {
            ShiftAll(shiftFrom_, i, shift_);
            ShiftAll(i, shiftFrom_, -shift_);
        }
        shiftFrom_ = i;
    }

    // Elements [begin, end), all below the place of the last MoveShiftTo, give way to `replacement`.
    void Replace(std::size_t begin, std::size_t end, std::vector<T> replacement) {
        const auto place = [&](std::size_t i) { return elements_.begin() + static_cast<std::ptrdiff_t>(i); };
        shiftFrom_ = shiftFrom_ - (end - begin) + replacement.size();
        const std::size_t common = std::min(end - begin, replacement.size());
        const auto middle = replacement.begin() + static_cast<std::ptrdiff_t>(common);
        std::move(replacement.begin(), middle, place(begin));
        elements_.erase(place(begin + common), place(end));
        elements_.insert(place(begin + common), std::make_move_iterator(middle),
                         std::make_move_iterator(replacement.end()));
    }

    // Moves the elements from the place of the last MoveShiftTo on.
    void Shift(std::int32_t lines) { shift_ += lines; }

  private:
    void ShiftAll(std::size_t begin, std::size_t end, std::int32_t lines) {
        for (; begin < end; ++begin) {
            elements_[begin].ShiftBy(lines);
        }
    }

    std::vector<T> elements_;
    std::size_t shiftFrom_ = 0;
    std::int32_t shift_ = 0;
};

}  // namespace lintara::workspace
