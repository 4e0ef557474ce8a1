#include "com/call_arguments.h"

#include "base/result.h"
#include "com/conversion.h"
#include "com/reference.h"

#include <utility>

namespace lintara::com {

using assistant::Direction;
using assistant::Parameter;
using assistant::ValueType;

namespace {

HRESULT CodeOf(const HostError& error) {
    return error.number == ErrorNumber::Overflow ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH;
}

template <class Value, class T>
HRESULT Keep(Value& value, Result<T> converted) {
    if (!converted) {
        return CodeOf(converted.error());
    }
    value = *std::move(converted);
    return S_OK;
}

template <class Value>
Value EmptyOf(ValueType type) {
    switch (type) {
        case ValueType::Text:
            return Text();
        case ValueType::Boolean:
            return false;
        case ValueType::Object:
            return ComPtr<IDispatch>();
        case ValueType::Integer:
        case ValueType::Long:
            break;
    }
    return std::int32_t{0};
}

template <class Value>
Variant VariantOf(ValueType type, const Value& value) {
    switch (type) {
        case ValueType::Text:
            return Variant(TextView(std::get<Text>(value)));
        case ValueType::Boolean:
            return Variant(std::get<bool>(value));
        case ValueType::Integer: {
            Variant integer;
            integer.get().vt = VT_I2;
            integer.get().iVal = static_cast<SHORT>(std::get<std::int32_t>(value));
            return integer;
        }
        case ValueType::Long:
            return Variant(std::get<std::int32_t>(value));
        case ValueType::Object:
            break;
    }
    return Variant(std::get<ComPtr<IDispatch>>(value).get());
}

}  // namespace

HRESULT CallArguments::Read(const assistant::DispatchMember& member, const DISPPARAMS& call,
                            UINT& wrongArgument) {
    values_.clear();
    for (const Parameter& parameter : member.parameters) {
        values_.push_back({&parameter, nullptr, 0, EmptyOf<Value>(parameter.type), {}, false});
    }
    if (const HRESULT code = Place(call, wrongArgument); FAILED(code)) {
        return code;
    }
    for (Slot& slot : values_) {
        if (slot.argument == nullptr && slot.parameter->direction != Direction::Out) {
            return DISP_E_BADPARAMCOUNT;
        }
    }
    for (Slot& slot : values_) {
        if (const HRESULT code = Take(slot); FAILED(code)) {
            wrongArgument = slot.index;
            return code;
        }
        if (slot.parameter->direction == Direction::InOut) {
            slot.given = slot.value;
        }
    }
    return S_OK;
}

// The array of a call holds the named arguments first, then the others from the last to the first.
HRESULT CallArguments::Place(const DISPPARAMS& call, UINT& wrongArgument) {
    if (call.cNamedArgs > call.cArgs || call.cArgs - call.cNamedArgs > values_.size()) {
        return DISP_E_BADPARAMCOUNT;
    }
    for (UINT place = 0; place < call.cArgs - call.cNamedArgs; ++place) {
        values_[place].index = call.cArgs - 1 - place;
        values_[place].argument = &call.rgvarg[values_[place].index];
    }
    for (UINT index = 0; index < call.cNamedArgs; ++index) {
        if (const HRESULT code = PlaceNamed(call, index); FAILED(code)) {
            wrongArgument = index;
            return code;
        }
    }
    return S_OK;
}

HRESULT CallArguments::PlaceNamed(const DISPPARAMS& call, UINT index) {
    const DISPID name = call.rgdispidNamedArgs[index];
    const std::size_t place =
        name == DISPID_PROPERTYPUT ? values_.size() - 1 : static_cast<std::size_t>(name);
    if (place >= values_.size()) {
        return DISP_E_PARAMNOTFOUND;
    }
    if (values_[place].argument != nullptr) {
        return DISP_E_BADPARAMCOUNT;
    }
    values_[place].index = index;
    values_[place].argument = &call.rgvarg[index];
    return S_OK;
}

HRESULT CallArguments::Take(Slot& slot) {
    if (slot.argument == nullptr) {
        return S_OK;
    }
    if ((slot.argument->vt & VT_BYREF) != 0 && slot.argument->byref == nullptr) {
        return DISP_E_TYPEMISMATCH;
    }
    const Parameter& parameter = *slot.parameter;
    const bool isWritten = parameter.direction != Direction::In;
    if (IsOmitted(*slot.argument)) {
        return parameter.direction == Direction::Out ? S_OK : DISP_E_PARAMNOTOPTIONAL;
    }
    if (isWritten && IsReference(*slot.argument) &&
        !TakesValuesLike(*slot.argument, VariantOf(parameter.type, slot.value))) {
        return DISP_E_TYPEMISMATCH;
    }
    if (parameter.direction == Direction::Out) {
        return S_OK;
    }
    switch (parameter.type) {
        case ValueType::Text:
            return Keep(slot.value, ToText(*slot.argument));
        case ValueType::Integer:
            return Keep(slot.value, ToInteger(*slot.argument));
        case ValueType::Long:
            return Keep(slot.value, ToLong(*slot.argument));
        case ValueType::Boolean:
            return Keep(slot.value, ToBoolean(*slot.argument));
        case ValueType::Object:
            break;
    }
    return Keep(slot.value, ToObject(*slot.argument));
}

bool CallArguments::IsToBeWritten(const Slot& slot) {
    const bool isReference =
        slot.argument != nullptr && IsReference(*slot.argument) && !IsOmitted(*slot.argument);
    const Direction direction = slot.parameter->direction;
    return isReference && (direction == Direction::Out ||
                           (direction == Direction::InOut && (slot.hasOutcome || slot.value != slot.given)));
}

void CallArguments::WriteBack() {
    for (const Slot& slot : values_) {
        if (IsToBeWritten(slot)) {
            StoreInto(*slot.argument, VariantOf(slot.parameter->type, slot.value));
        }
    }
}

}  // namespace lintara::com
