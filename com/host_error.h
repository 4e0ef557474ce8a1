// What a failed COM call is as an error of the host.
#pragma once

#include "base/result.h"

#include <oaidl.h>

namespace lintara::com {

// The run-time error that the language knows the code under. A code that it has no number for stays the
// number itself, so that nothing of it is lost.
[[nodiscard]] HostError ErrorOf(HRESULT code);

// The error that a call raised: DISP_E_EXCEPTION with the exception's own code. Frees what `exception` holds.
[[nodiscard]] HostError ErrorOf(HRESULT code, EXCEPINFO& exception);

[[nodiscard]] inline std::unexpected<HostError> FailureOf(HRESULT code) {
    return std::unexpected(ErrorOf(code));
}

}  // namespace lintara::com
