#include "cli/serve/request_error.h"

namespace lintara::cli {

RequestError HostFailure(const std::string& message) {
    return {ErrorCode::HostFailure, message};
}

RequestError HostFailure(const workspace::Diagnostics& diagnostics) {
    std::string message;
    for (const workspace::Diagnostic& diagnostic : diagnostics) {
        message += (message.empty() ? "" : "\n") + diagnostic.ToString();
    }
    return HostFailure(message);
}

}  // namespace lintara::cli
