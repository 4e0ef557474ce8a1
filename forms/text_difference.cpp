#include "forms/text_difference.h"

#include <algorithm>

namespace lintara::forms {
namespace {

bool IsOnePiece(char16_t first, char16_t second) {
    const bool isBreak = first == u'\r' && second == u'\n';
    return isBreak || (first >= 0xD800 && first <= 0xDBFF && second >= 0xDC00 && second <= 0xDFFF);
}

bool IsInside(TextView text, std::size_t position) {
    return position > 0 && position < text.size() && IsOnePiece(text[position - 1], text[position]);
}

}  // namespace

TextDifference DifferenceOf(TextView before, TextView after) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t head = 0;
    while (head < shorter && before[head] == after[head]) {
        ++head;
    }
    if (IsInside(before, head) || IsInside(after, head)) {
        --head;
    }
    std::size_t tail = 0;
    while (tail < shorter - head && before[before.size() - tail - 1] == after[after.size() - tail - 1]) {
        ++tail;
    }
    if (IsInside(before, before.size() - tail) || IsInside(after, after.size() - tail)) {
        --tail;
    }
    return {.at = head,
            .removed = before.size() - head - tail,
            .inserted = after.substr(head, after.size() - head - tail)};
}

}  // namespace lintara::forms
