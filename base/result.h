// The outcome of a call to the host or to the BASIC runtime: a value, or the run-time error that the
// language would have raised. No such call throws.
#pragma once

#include <expected>
#include <string_view>
#include <type_traits>
#include <utility>

namespace lintara {

// The run-time errors of the language, by the numbers under which it reports them.
enum class ErrorNumber {
    InvalidArgument = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    ObjectNotSet = 91,
    MemberNotSupported = 438,
    HostFailure = 1004,
};

// A failed call. Cheap to make and copy: lookups that are expected to fail are part of the normal work.
struct HostError {
    ErrorNumber number = ErrorNumber::HostFailure;
    std::string_view reason = "the call failed";  // static storage; for people

    friend bool operator==(const HostError&, const HostError&) = default;
};

template <class T>
using Result = std::expected<T, HostError>;

[[nodiscard]] constexpr std::unexpected<HostError> Failure(ErrorNumber number, std::string_view reason) {
    return std::unexpected(HostError{number, reason});
}

// What `next`, a call that yields a Result, makes of the value of `result`; its error when there is none.
// The standard's and_then does the same, in libraries newer than the oldest that we build with.
template <class T, class Next>
[[nodiscard]] auto Then(Result<T> result, Next&& next) {
    if constexpr (std::is_void_v<T>) {
        using Outcome = decltype(std::forward<Next>(next)());
        return result ? std::forward<Next>(next)() : Outcome(std::unexpect, result.error());
    } else {
        using Outcome = decltype(std::forward<Next>(next)(*std::move(result)));
        return result ? std::forward<Next>(next)(*std::move(result)) : Outcome(std::unexpect, result.error());
    }
}

}  // namespace lintara
