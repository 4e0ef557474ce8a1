// The arguments of one late-bound call, in the order in which the language writes them.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "com/member_ids.h"
#include "com/variant.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace lintara::com {

class Arguments {
  public:
    Arguments& Add(Variant value);
    Arguments& Add(TextView text) { return Add(Variant(text)); }
    Arguments& Add(std::int32_t number) { return Add(Variant(number)); }
    Arguments& Add(std::same_as<bool> auto value) { return Add(Variant(value)); }
    // A variable of the caller, which outlives the call: it is written when the call has succeeded.
    Arguments& AddReference(std::int32_t& variable);

    [[nodiscard]] bool HasReferences() const { return hasReferences_; }

    // The arguments from the last to the first, as a call takes them. They hold until the next call of this.
    [[nodiscard]] std::vector<VARIANTARG>& Reversed(ByReference style);

    // Writes what the callee left in the references into the caller's variables; none when one of the values
    // is no number.
    [[nodiscard]] Result<void> WriteBack() const;

  private:
    struct Argument {
        Variant value;
        std::int32_t* variable = nullptr;
    };
    static VARIANTARG Passed(Argument& argument, ByReference style);

    std::vector<Argument> arguments_;
    std::vector<VARIANTARG> reversed_;
    bool hasReferences_ = false;
};

}  // namespace lintara::com
