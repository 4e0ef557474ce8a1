// The BASIC runtime's conversions between texts and numbers.
//
// The runtime reads numbers as the user's regional settings write them. This library takes one choice for
// everybody, so that a project comes out the same on every machine: a period before the decimals, a comma
// between thousands, "$" as the currency sign.
#pragma once

#include "base/result.h"
#include "base/text.h"

#include <cstdint>

namespace lintara {

// Whether the runtime would read `text` as a number: digits with, in any combination that makes sense,
// - white space (blank, tab, line and page breaks) before and after, none inside;
// - one sign, before or after; or parentheses around, which mean a negative number too;
// - one currency sign in front;
// - commas behind the first digit of the whole part; how they group the digits does not matter;
// - decimals, and an exponent after "e" or "d" of either case;
// or &H with hexadecimal or &O with octal digits, of at most 64 bits, without any of these but white space.
// A number beyond the range of a double is none; one too small for it counts as 0.
[[nodiscard]] bool IsNumeric(TextView text);

// Conversion to 16 and 32 bits. Halves go to the even neighbour; a number outside the range is an overflow,
// a text that is no number a type mismatch. &H and &O give the bits of the result: CInt of &HFFFF is -1.
[[nodiscard]] Result<std::int16_t> CInt(double number);
[[nodiscard]] Result<std::int16_t> CInt(TextView text);
[[nodiscard]] Result<std::int32_t> CLng(double number);
[[nodiscard]] Result<std::int32_t> CLng(TextView text);

// The decimal digits of `number`, after "-" if it is negative; never a blank in front.
[[nodiscard]] Text CStr(std::int32_t number);
// The same, written behind `text`.
void AppendDecimal(Text& text, std::int32_t number);

}  // namespace lintara
