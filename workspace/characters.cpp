#include "workspace/characters.h"

#include "base/text_scan.h"

#include <algorithm>

#include <unicode/uchar.h>

namespace lintara::workspace {

namespace detail {

bool IsLetterBeyondAscii(char16_t c) {
    return (U_GET_GC_MASK(c) & U_GC_L_MASK) != 0;
}

bool IsDigitBeyondAscii(char16_t c) {
    return (U_GET_GC_MASK(c) & U_GC_ND_MASK) != 0;
}

char16_t FoldBeyondAscii(char16_t c) {
    return static_cast<char16_t>(u_foldCase(c, U_FOLD_CASE_DEFAULT));
}

}  // namespace detail

Text FoldCase(TextView name) {
    Text folded(name);
    std::ranges::transform(folded, folded.begin(), Fold);
    return folded;
}

bool SameName(TextView a, TextView b) {
    return std::ranges::equal(a, b, {}, Fold, Fold);
}

std::size_t FindWithoutCase(TextView text, TextView sought, std::size_t from) {
    if (sought.empty() || sought.size() > text.size()) {
        return sought.empty() && from <= text.size() ? from : TextView::npos;
    }
    // Nearly no place has both the first and the middle character. What is beyond ASCII is always looked at
    // closer: some of it folds to ASCII.
    constexpr std::uint16_t caseBit = 0x20;
    constexpr std::uint16_t beyondAscii = 0xFF80;
    const char16_t* const units = text.data();
    const std::size_t middle = sought.size() / 2;
    const char16_t first = Fold(sought.front());
    const auto firstUnit = static_cast<std::uint16_t>(first | caseBit);
    const auto middleUnit = static_cast<std::uint16_t>(Fold(sought[middle]) | caseBit);
    return scan::FindInBlocks(
        from, text.size() - sought.size() + 1,
        [=](std::size_t at) {
            const scan::Units a = scan::LoadUnits(units + at);
            const scan::Units b = scan::LoadUnits(units + at + middle);
            return (((a | caseBit) == firstUnit) | ((a & beyondAscii) != 0)) &
                   (((b | caseBit) == middleUnit) | ((b & beyondAscii) != 0));
        },
        [=](std::size_t at) {
            return Fold(units[at]) == first && SameName(text.substr(at, sought.size()), sought);
        });
}

std::size_t HashName(TextView name) {
    std::size_t hash = 0xCBF29CE484222325U;
    for (const char16_t c : name) {
        hash = (hash ^ Fold(c)) * 0x100000001B3U;
    }
    return hash ^ (hash >> 32U);
}

}  // namespace lintara::workspace
