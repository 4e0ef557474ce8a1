#include "base/strings.h"

#include <algorithm>
#include <cstddef>

namespace lintara {
namespace {

constexpr char16_t Blank = u' ';

std::unexpected<HostError> NegativeLength() {
    return Failure(ErrorNumber::InvalidArgument, "the length is negative");
}

std::unexpected<HostError> StartBelowOne() {
    return Failure(ErrorNumber::InvalidArgument, "the start is below 1");
}

char16_t FoldLetter(char16_t character) {
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + (u'a' - u'A'))
                                                  : character;
}

std::size_t FindFrom(TextView text, TextView sought, std::size_t from, Compare compare) {
    if (compare == Compare::Binary) {
        return text.find(sought, from);
    }
    const auto same = [](char16_t a, char16_t b) { return FoldLetter(a) == FoldLetter(b); };
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(from);
    const auto found = std::search(begin, text.end(), sought.begin(), sought.end(), same);
    return found == text.end() && !sought.empty() ? TextView::npos
                                                  : static_cast<std::size_t>(found - text.begin());
}

// `start` is at least 1.
std::int32_t PositionOf(std::size_t start, TextView text, TextView sought, Compare compare) {
    if (start > text.size()) {
        return 0;
    }
    const std::size_t found = FindFrom(text, sought, start - 1, compare);
    return found == TextView::npos ? 0 : static_cast<std::int32_t>(found + 1);
}

}  // namespace

std::int32_t Len(TextView text) {
    return static_cast<std::int32_t>(text.size());
}

Result<TextView> Left(TextView text, std::int32_t length) {
    if (length < 0) {
        return NegativeLength();
    }
    return text.substr(0, static_cast<std::size_t>(length));
}

Result<TextView> Right(TextView text, std::int32_t length) {
    if (length < 0) {
        return NegativeLength();
    }
    const std::size_t kept = std::min(text.size(), static_cast<std::size_t>(length));
    return text.substr(text.size() - kept);
}

Result<TextView> Mid(TextView text, std::int32_t start) {
    if (start < 1) {
        return StartBelowOne();
    }
    return text.substr(std::min(text.size(), static_cast<std::size_t>(start) - 1));
}

Result<TextView> Mid(TextView text, std::int32_t start, std::int32_t length) {
    if (length < 0) {
        return NegativeLength();
    }
    return Then(Mid(text, start), [length](TextView rest) -> Result<TextView> {
        return rest.substr(0, static_cast<std::size_t>(length));
    });
}

Result<std::int32_t> InStr(std::int32_t start, TextView text, TextView sought, Compare compare) {
    if (start < 1) {
        return StartBelowOne();
    }
    return PositionOf(static_cast<std::size_t>(start), text, sought, compare);
}

std::int32_t InStr(TextView text, TextView sought, Compare compare) {
    return PositionOf(1, text, sought, compare);
}

TextView LTrim(TextView text) {
    text.remove_prefix(std::min(text.find_first_not_of(Blank), text.size()));
    return text;
}

TextView RTrim(TextView text) {
    return text.substr(0, text.find_last_not_of(Blank) + 1);
}

TextView Trim(TextView text) {
    return RTrim(LTrim(text));
}

Result<Text> Space(std::int32_t count) {
    if (count < 0) {
        return NegativeLength();
    }
    return Text(static_cast<std::size_t>(count), Blank);
}

}  // namespace lintara
