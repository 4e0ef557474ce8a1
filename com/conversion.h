// Values of COM as the types of the language, converted as an assignment to a variable of that type converts
// them: numbers from texts and back, Booleans to numbers, references followed, an object's default property
// taken. Numbers and dates read and write as in English, whatever the user's regional settings say. Null and
// arrays are type mismatches.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "com/com_ptr.h"
#include "com/variant.h"

#include <cstdint>
#include <oaidl.h>

namespace lintara::com {

[[nodiscard]] Result<Text> ToText(const VARIANT& value);
[[nodiscard]] Result<std::int16_t> ToInteger(const VARIANT& value);
[[nodiscard]] Result<std::int32_t> ToLong(const VARIANT& value);
[[nodiscard]] Result<bool> ToBoolean(const VARIANT& value);
// Null for Empty and the language's Nothing. What is no object, or has no dispatch interface, is a mismatch.
[[nodiscard]] Result<ComPtr<IDispatch>> ToObject(const VARIANT& value);

// The value as another type of variant, with no reference left in it.
[[nodiscard]] Result<Variant> ConvertTo(VARTYPE type, const VARIANT& value);

// Whether the variant stands for an argument that the caller has left out.
[[nodiscard]] bool IsOmitted(const VARIANT& value);

}  // namespace lintara::com
