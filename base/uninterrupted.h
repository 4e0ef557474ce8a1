// Calls of the system that were interrupted before they did anything are made again.
#pragma once

#include <cerrno>
#include <system_error>

namespace lintara {

// `call` answers -1 with errno when it fails, as the system's calls do.
template <class Call>
auto Uninterrupted(const Call& call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

// The same for calls that leave their error in `error`.
template <class Call>
auto Uninterrupted(std::error_code& error, const Call& call) {
    auto result = call();
    while (error == std::errc::interrupted) {
        result = call();
    }
    return result;
}

}  // namespace lintara
