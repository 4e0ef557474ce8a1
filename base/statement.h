// The rule that run-time errors are ignored statement by statement: a failing call leaves its target at its
// earlier value, and the next statement runs.
#pragma once

#include "base/result.h"

#include <utility>

namespace lintara {

// `target = call`: assigns the value when the call succeeded, else leaves `target` alone.
// Returns whether it was assigned, for the few places where the next step depends on it.
template <class T, class U>
bool Assign(T& target, Result<U>&& result) {
    if (!result) {
        return false;
    }
    target = *std::move(result);
    return true;
}

// A call made for its effect alone, whose failure is ignored.
inline void Attempt(const Result<void>&) {}

}  // namespace lintara
