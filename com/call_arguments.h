// The arguments of a call through IDispatch::Invoke, as the types that the member's parameters have, and the
// way back into the caller's variables.
//
// A caller may pass a value or a reference, of the parameter's type or of another that converts to it, by
// place or by name. A parameter that is only written may be left out; every other must be there. What is
// written back takes the type of the caller's variable: of the value in it, where that is a variant. A
// variant that is empty, or whose type cannot hold the value, takes the parameter's type.
#pragma once

#include "assistant/dispatch_table.h"
#include "base/text.h"
#include "com/com_ptr.h"

#include <cstddef>
#include <cstdint>
#include <oaidl.h>
#include <utility>
#include <variant>
#include <vector>

namespace lintara::com {

class CallArguments {
  public:
    // Takes the arguments from a call. DISP_E_BADPARAMCOUNT when there are too many or too few,
    // DISP_E_PARAMNOTOPTIONAL, DISP_E_PARAMNOTFOUND (an unknown name), DISP_E_TYPEMISMATCH or DISP_E_OVERFLOW
    // for one argument, whose place in the call's array is written to `wrongArgument` then.
    [[nodiscard]] HRESULT Read(const assistant::DispatchMember& member, const DISPPARAMS& call,
                               UINT& wrongArgument);

    // The value of a parameter, by its place from 0. Its type is that of the member's table: Integer, Long.
    [[nodiscard]] Text& text(std::size_t place) { return std::get<Text>(values_[place].value); }
    [[nodiscard]] std::int32_t& number(std::size_t place) {
        return std::get<std::int32_t>(values_[place].value);
    }
    [[nodiscard]] std::int16_t integer(std::size_t place) { return static_cast<std::int16_t>(number(place)); }
    [[nodiscard]] bool& truth(std::size_t place) { return std::get<bool>(values_[place].value); }
    [[nodiscard]] const ComPtr<IDispatch>& object(std::size_t place) const {
        return std::get<ComPtr<IDispatch>>(values_[place].value);
    }

    // Gives a parameter its outcome. It goes back into the caller's variable even when it is what came in: a
    // 7 that stood for True becomes -1.
    template <class T>
    void Write(std::size_t place, T value) {
        values_[place].value = std::move(value);
        values_[place].hasOutcome = true;
    }

    // Writes the parameters that are written into the caller's variables: those that have an outcome or whose
    // values have changed, and all that are only written.
    void WriteBack();

  private:
    using Value = std::variant<Text, std::int32_t, bool, ComPtr<IDispatch>>;
    struct Slot {
        const assistant::Parameter* parameter = nullptr;
        VARIANTARG* argument = nullptr;  // null when it was left out
        UINT index = 0;                  // in the array of the call
        Value value;
        Value given;  // of a parameter that is read and written: what it was
        bool hasOutcome = false;
    };

    [[nodiscard]] HRESULT Place(const DISPPARAMS& call, UINT& wrongArgument);
    [[nodiscard]] HRESULT PlaceNamed(const DISPPARAMS& call, UINT index);
    [[nodiscard]] static HRESULT Take(Slot& slot);
    [[nodiscard]] static bool IsToBeWritten(const Slot& slot);

    std::vector<Slot> values_;
};

}  // namespace lintara::com
