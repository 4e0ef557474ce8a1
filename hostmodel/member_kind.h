// The kinds by which the IDE tells the procedures of one name apart, and the types of a module's members.
// Names and values are the IDE's own.
#pragma once

#include <cstdint>

namespace lintara::hostmodel {

enum class MemberKind : std::int32_t {
    vbext_pk_Proc = 0,  // a Sub or Function
    vbext_pk_Let = 1,
    vbext_pk_Set = 2,
    vbext_pk_Get = 3,
};

enum class MemberType : std::int32_t {
    Method = 1,  // a Sub, Function or Declare
    Property = 2,
    Variable = 3,
    Event = 4,
    Constant = 5,
};

enum class ComponentType : std::int32_t {
    Module = 1,
    Class = 2,
    OfficeForm = 3,
    Form = 5,
    MDIForm = 6,
    PropertyPage = 7,
    UserControl = 8,
    UserDocument = 9,
    Designer = 11,
};

}  // namespace lintara::hostmodel
