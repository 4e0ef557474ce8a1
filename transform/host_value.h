// What a late-bound call or a field of a database gave, as the type that the assignment needs. The language's
// Empty is "" as a text and 0 as a number.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "hostmodel/dispatch.h"

#include <cstdint>
#include <memory>

namespace lintara::transform {

// A value of another type is a type mismatch.
[[nodiscard]] Result<Text> AsText(const hostmodel::Value& value);
[[nodiscard]] Result<std::int32_t> AsNumber(const hostmodel::Value& value);

// Never null: what is no object, or none at all, fails.
[[nodiscard]] Result<std::shared_ptr<hostmodel::Dispatch>> AsObject(const hostmodel::Value& value);

}  // namespace lintara::transform
