#include "workspace/characters.h"

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

std::size_t HashName(TextView name) {
    std::size_t hash = 0xCBF29CE484222325U;
    for (const char16_t c : name) {
        hash = (hash ^ Fold(c)) * 0x100000001B3U;
    }
    return hash ^ (hash >> 32U);
}

}  // namespace lintara::workspace
