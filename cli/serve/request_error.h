// Why a request fails: thrown wherever that turns out, and answered by the endpoint. Whoever throws it has
// changed nothing.
#pragma once

#include "base/result.h"
#include "workspace/diagnostic.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace lintara::cli {

// The protocol's numbers.
enum class ErrorCode : int {
    MalformedLine = -32700,
    NoRequest = -32600,
    UnknownMethod = -32601,
    WrongArguments = -32602,
    Internal = -32603,     // memory ran out, or a bug
    HostFailure = -32000,  // a project, a module or a file says no
};

class RequestError : public std::runtime_error {
  public:
    RequestError(ErrorCode code, const std::string& message) : std::runtime_error(message), code_(code) {}

    [[nodiscard]] ErrorCode code() const { return code_; }

  private:
    ErrorCode code_;
};

[[nodiscard]] RequestError HostFailure(const std::string& message);
// All that was wrong, a line each.
[[nodiscard]] RequestError HostFailure(const workspace::Diagnostics& diagnostics);

// The value of a host call; throws when it failed.
template <class T>
T Checked(Result<T> result) {
    if (!result) {
        throw HostFailure(std::string(result.error().reason));
    }
    if constexpr (!std::is_void_v<T>) {
        return *std::move(result);
    }
}

}  // namespace lintara::cli
