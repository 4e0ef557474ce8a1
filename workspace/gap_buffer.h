// A sequence that makes repeated insertion at one place cheap: the free room stands where the last edit took
// place, so an edit moves only the elements between the last place and the new one. A walk that edits from
// front to back moves each element once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <type_traits>
#include <vector>

namespace lintara::workspace {

template <class T>
requires std::is_trivially_copyable_v<T>
class GapBuffer {
  public:
    GapBuffer() = default;
    explicit GapBuffer(std::vector<T> elements)
        : slots_(std::move(elements)), gapBegin_(slots_.size()), gapEnd_(slots_.size()) {}

    [[nodiscard]] std::size_t size() const { return slots_.size() - (gapEnd_ - gapBegin_); }
    [[nodiscard]] const T& operator[](std::size_t i) const { return slots_[Slot(i)]; }
    [[nodiscard]] T& operator[](std::size_t i) { return slots_[Slot(i)]; }

    // Inserts ahead of element `at`; `at` may be size().
    void Insert(std::size_t at, std::span<const T> elements) {
        if (gapEnd_ - gapBegin_ < elements.size()) {
            Grow(elements.size());
        }
        MoveGap(at);
        std::ranges::copy(elements, slots_.begin() + static_cast<std::ptrdiff_t>(at));
        gapBegin_ += elements.size();
    }

    void Erase(std::size_t at, std::size_t count) {
        MoveGap(at);
        gapEnd_ += count;
    }

  private:
    [[nodiscard]] std::size_t Slot(std::size_t i) const {
        return i < gapBegin_ ? i : i + (gapEnd_ - gapBegin_);
    }

    void MoveGap(std::size_t at) {
        const auto begin = slots_.begin();
        const auto place = [&](std::size_t slot) { return begin + static_cast<std::ptrdiff_t>(slot); };
        if (at < gapBegin_) {
            std::copy_backward(place(at), place(gapBegin_), place(gapEnd_));
            gapEnd_ -= gapBegin_ - at;
        } else if (at > gapBegin_) {
            const std::size_t moved = at - gapBegin_;
            std::copy(place(gapEnd_), place(gapEnd_ + moved), place(gapBegin_));
            gapEnd_ += moved;
        }
        gapBegin_ = at;
    }

    void Grow(std::size_t needed) {
        MoveGap(size());
        slots_.resize(gapBegin_ + std::max(needed, gapBegin_ / 4 + 16));
        gapEnd_ = slots_.size();
    }

    std::vector<T> slots_;
    std::size_t gapBegin_ = 0;
    std::size_t gapEnd_ = 0;
};

}  // namespace lintara::workspace
