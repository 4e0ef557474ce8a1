// How the system learns of the component server: its classes with their program identifiers and the file that
// they are in, and its type library.
#pragma once

#include <windows.h>

namespace lintara::com {

// Who sees the registration: all users of the machine, or the user whose rights the caller has.
enum class RegisteredFor { Machine, User };

// For the machine or, where the caller has no right to that, for the user. A registration of this user's that
// would hide the machine's is taken away. When it fails, nothing stays registered.
HRESULT RegisterComponents() noexcept;

// Takes away what RegisterComponents wrote, for the machine and for the user. What others have put beside it
// stays. S_OK when there was nothing.
HRESULT UnregisterComponents() noexcept;

// Does something for the machine or, where `attempt` answers E_ACCESSDENIED to that, for the user.
HRESULT ForMachineElseUser(HRESULT (*attempt)(RegisteredFor whom)) noexcept;

// The same for one of the two. Registering fails with E_ACCESSDENIED where the caller has no right to it.
HRESULT RegisterComponents(RegisteredFor whom) noexcept;
HRESULT UnregisterComponents(RegisteredFor whom) noexcept;

}  // namespace lintara::com
