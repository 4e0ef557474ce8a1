#include "com/dialogs_members.h"

#include <array>

namespace lintara::com {

using assistant::DispatchMember;
using assistant::Parameter;
using enum assistant::Access;
using enum assistant::Direction;

namespace {

constexpr auto Txt = assistant::ValueType::Text;
constexpr auto Integer = assistant::ValueType::Integer;
constexpr auto Long = assistant::ValueType::Long;
constexpr auto Boolean = assistant::ValueType::Boolean;

// What a dialog writes is in and out: a caller's variable keeps its value when the user cancels.
constexpr std::array InsertCC = {
    Parameter{u"Scope", Integer, InOut},        Parameter{u"TextToInsert", Txt, InOut},
    Parameter{u"NoDelimiters", Boolean, InOut}, Parameter{u"WhereToInsert", Integer, InOut},
    Parameter{u"LineToInsert", Long, InOut},    Parameter{u"ID", Integer, InOut},
    Parameter{u"ProcAvailable", Boolean},       Parameter{u"ComponentAvailable", Long},
    Parameter{u"sCCPBufferX", Txt, InOut}};
constexpr std::array RemoveCC = {Parameter{u"Scope", Integer, InOut}, Parameter{u"ID", Integer, InOut},
                                 Parameter{u"ProcAvailable", Boolean},
                                 Parameter{u"ComponentAvailable", Long}};
constexpr std::array InsertEH = {
    Parameter{u"Scope", Integer, InOut},    Parameter{u"InsertEH", Boolean, InOut},
    Parameter{u"InsertLN", Boolean, InOut}, Parameter{u"EHLabel", Txt, InOut},
    Parameter{u"EHCode", Txt, InOut},       Parameter{u"LNBase", Txt, InOut},
    Parameter{u"LNStep", Txt, InOut},       Parameter{u"iLenGetMemberName", Integer},
    Parameter{u"iGetLineNumber", Long},     Parameter{u"sCCPBuffer", Txt, InOut}};
constexpr std::array RemoveEH = {Parameter{u"Scope", Integer, InOut}, Parameter{u"RemoveEH", Boolean, InOut},
                                 Parameter{u"RemoveLN", Boolean, InOut},
                                 Parameter{u"iLenGetMemberName", Integer},
                                 Parameter{u"iGetLineNumber", Long}};

constexpr std::array Members = {
    DispatchMember{1, u"GetInsertCCParameters", Method, InsertCC, Boolean},
    DispatchMember{2, u"GetRemoveCCParameters", Method, RemoveCC, Boolean},
    DispatchMember{3, u"GetInsertEHParameters", Method, InsertEH, Boolean},
    DispatchMember{4, u"GetRemoveEHParameters", Method, RemoveEH, Boolean},
};

}  // namespace

std::span<const DispatchMember> DialogsMembers() {
    return Members;
}

}  // namespace lintara::com
