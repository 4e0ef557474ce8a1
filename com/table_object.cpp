#include "com/table_object.h"

namespace lintara::com {

using assistant::ValueType;

// An empty text is a null one, so nothing here needs memory.
Variant EmptyResult(const assistant::DispatchMember& member) {
    Variant result;
    if (!member.result) {
        return result;
    }
    switch (*member.result) {
        case ValueType::Text:
            result.get().vt = VT_BSTR;
            result.get().bstrVal = nullptr;
            break;
        case ValueType::Integer:
            result.get().vt = VT_I2;
            result.get().iVal = 0;
            break;
        case ValueType::Long:
            result = Variant(std::int32_t{0});
            break;
        case ValueType::Boolean:
            result = Variant(false);
            break;
        case ValueType::Object:
            result = Variant(static_cast<IDispatch*>(nullptr));
            break;
    }
    return result;
}

}  // namespace lintara::com
