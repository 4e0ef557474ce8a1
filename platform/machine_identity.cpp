#include "platform/machine_identity.h"

#include <array>

#ifdef _WIN32
#include "platform/wide_text.h"

#include <lmcons.h>
#include <windows.h>
#else
#include "base/utf8.h"

#include <pwd.h>
#include <unistd.h>
#endif

namespace lintara::platform {

namespace {

std::unexpected<HostError> NoComputerName() {
    return Failure(ErrorNumber::HostFailure, "the computer has no name");
}

std::unexpected<HostError> NoUserName() {
    return Failure(ErrorNumber::HostFailure, "the user has no name");
}

}  // namespace

#ifdef _WIN32

Result<Text> MachineIdentity::ComputerName() {
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name{};
    auto length = static_cast<DWORD>(name.size());
    if (::GetComputerNameW(name.data(), &length) == 0) {
        return NoComputerName();
    }
    return FromWide({name.data(), length});
}

Result<Text> MachineIdentity::UserName() {
    std::array<wchar_t, UNLEN + 1> name{};
    auto length = static_cast<DWORD>(name.size());
    if (::GetUserNameW(name.data(), &length) == 0 || length == 0) {
        return NoUserName();
    }
    return FromWide({name.data(), length - 1});  // without the zero at its end
}

#else

Result<Text> MachineIdentity::ComputerName() {
    std::array<char, 256> name{};
    if (::gethostname(name.data(), name.size() - 1) != 0) {
        return NoComputerName();
    }
    return FromUtf8(name.data());
}

Result<Text> MachineIdentity::UserName() {
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 16384> buffer{};
    if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) {
        return NoUserName();
    }
    return FromUtf8(found->pw_name);
}

#endif

}  // namespace lintara::platform
