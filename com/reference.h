// A variable of the caller, to which a by-reference variant refers.
#pragma once

#include "com/variant.h"

#include <oaidl.h>

namespace lintara::com {

// Whether the variant is a reference to a variable at all.
[[nodiscard]] bool IsReference(const VARIANT& argument);

// Whether a value like `example` can be written into the variable.
[[nodiscard]] bool TakesValuesLike(const VARIANT& argument, const Variant& example);

// Writes the value into the variable, converted to its type. False, with the variable as it was, when that
// type cannot hold it. A variable of variant type takes the value with its own type when the value that it
// has now cannot be followed.
bool StoreInto(const VARIANT& argument, const Variant& value);

}  // namespace lintara::com
