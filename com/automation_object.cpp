#include "com/automation_object.h"

#include "com/com_ptr.h"
#include "com/host_error.h"

#include <memory>
#include <objbase.h>

namespace lintara::com {

Result<LateBound> CreateAutomationObject(const wchar_t* programId) {
    CLSID classId{};
    if (const HRESULT code = CLSIDFromProgID(programId, &classId); FAILED(code)) {
        return FailureOf(code);
    }
    ComPtr<IDispatch> object;
    constexpr DWORD Context = CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER;
    if (const HRESULT code =
            CoCreateInstance(classId, nullptr, Context, __uuidof(IDispatch), object.UntypedPlace());
        FAILED(code)) {
        return FailureOf(code);
    }
    return LateBound(object, std::make_shared<MemberIds>());
}

}  // namespace lintara::com
