// Searches in texts by blocks that fit a register of the processor. Guards and searches look at every line of
// a project again and again, and nearly always for what is not there.
#pragma once

#include "base/text.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace lintara {

namespace scan {

#ifdef __SSE2__
inline constexpr std::size_t blockSize = 8;
using Units = std::uint16_t __attribute__((vector_size(2 * blockSize)));
#else
// Where no such registers can be counted on, a block is one character.
inline constexpr std::size_t blockSize = 1;
using Units = std::uint16_t;
#endif

inline Units LoadUnits(const char16_t* text) {
    Units units;
    std::memcpy(&units, text, sizeof units);
    return units;
}

// Two bits for each unit of a comparison's outcome, the first unit's lowest: set where it holds.
template <class Outcome>
unsigned BitsOf(Outcome outcome) {
#ifdef __SSE2__
    using Bytes = char __attribute__((vector_size(2 * blockSize)));
    return static_cast<unsigned>(__builtin_ia32_pmovmskb128(std::bit_cast<Bytes>(outcome)));
#else
    return outcome ? 3U : 0U;
#endif
}

// The first of the characters in a block of which the comparison's outcome holds and that `holds`, by its
// number; `blockSize` when there is none.
template <class Outcome, class Holds>
std::size_t FirstOf(Outcome outcome, Holds holds) {
    for (unsigned bits = BitsOf(outcome); bits != 0;) {
        const auto unit = static_cast<std::size_t>(std::countr_zero(bits)) / 2;
        if (holds(unit)) {
            return unit;
        }
        bits &= ~(3U << (2 * unit));
    }
    return blockSize;
}

// The first offset in [from, end) at which `holds`; npos when there is none. `candidates` compares the block
// that begins at an offset: `holds` is asked only where the outcome does.
template <class Candidates, class Holds>
std::size_t FindInBlocks(std::size_t from, std::size_t end, Candidates candidates, Holds holds) {
    if (from >= end || end - from < blockSize) {
        for (; from < end; ++from) {
            if (holds(from)) {
                return from;
            }
        }
        return TextView::npos;
    }
    // The last block overlaps the one before it.
    for (std::size_t at = from;; at = std::min(at + blockSize, end - blockSize)) {
        const std::size_t found = FirstOf(candidates(at), [&](std::size_t i) { return holds(at + i); });
        if (found < blockSize) {
            return at + found;
        }
        if (at == end - blockSize) {
            return TextView::npos;
        }
    }
}

}  // namespace scan

// The offset of the first `sought` at or after `from`; npos when there is none.
inline std::size_t FindCharacter(TextView text, char16_t sought, std::size_t from = 0) {
    const char16_t* const units = text.data();
    const auto wanted = static_cast<std::uint16_t>(sought);
    return scan::FindInBlocks(
        from, text.size(), [=](std::size_t at) { return scan::LoadUnits(units + at) == wanted; },
        [=](std::size_t at) { return units[at] == sought; });
}

// The offset of the first of the digits 0 to 9 at or after `from`; npos when there is none.
inline std::size_t FindDigit(TextView text, std::size_t from = 0) {
    constexpr std::uint16_t zero = u'0';
    constexpr std::uint16_t digits = 10;
    const char16_t* const units = text.data();
    return scan::FindInBlocks(
        from, text.size(), [=](std::size_t at) { return scan::LoadUnits(units + at) - zero < digits; },
        [=](std::size_t at) { return units[at] >= u'0' && units[at] <= u'9'; });
}

// Where `sought`, which is not empty, first occurs at or after `from`; npos when it does not.
inline std::size_t FindExactly(TextView text, TextView sought, std::size_t from = 0) {
    if (sought.size() > text.size()) {
        return TextView::npos;
    }
    const char16_t* const units = text.data();
    const std::size_t middle = sought.size() / 2;
    const auto first = static_cast<std::uint16_t>(sought.front());
    const auto second = static_cast<std::uint16_t>(sought[middle]);
    return scan::FindInBlocks(
        from, text.size() - sought.size() + 1,
        [=](std::size_t at) {
            return (scan::LoadUnits(units + at) == first) & (scan::LoadUnits(units + at + middle) == second);
        },
        [=](std::size_t at) {
            return units[at] == sought.front() &&
                   std::memcmp(units + at, sought.data(), sought.size() * sizeof(char16_t)) == 0;
        });
}

// How many characters both texts begin with, and end with.
inline std::size_t CommonBeginning(TextView a, TextView b) {
    const std::size_t size = std::min(a.size(), b.size());
    std::size_t at = 0;
    while (at + scan::blockSize <= size &&
           std::memcmp(a.data() + at, b.data() + at, scan::blockSize * sizeof(char16_t)) == 0) {
        at += scan::blockSize;
    }
    while (at < size && a[at] == b[at]) {
        ++at;
    }
    return at;
}

inline std::size_t CommonEnding(TextView a, TextView b) {
    const std::size_t size = std::min(a.size(), b.size());
    const char16_t* const endOfA = a.data() + a.size();
    const char16_t* const endOfB = b.data() + b.size();
    std::size_t count = 0;
    while (count + scan::blockSize <= size &&
           std::memcmp(endOfA - count - scan::blockSize, endOfB - count - scan::blockSize,
                       scan::blockSize * sizeof(char16_t)) == 0) {
        count += scan::blockSize;
    }
    while (count < size && *(endOfA - count - 1) == *(endOfB - count - 1)) {
        ++count;
    }
    return count;
}

}  // namespace lintara
