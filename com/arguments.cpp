#include "com/arguments.h"

#include "com/conversion.h"

#include <utility>

namespace lintara::com {

Arguments& Arguments::Add(Variant value) {
    arguments_.push_back({std::move(value), nullptr});
    return *this;
}

Arguments& Arguments::AddReference(std::int32_t& variable) {
    arguments_.push_back({Variant(variable), &variable});
    hasReferences_ = true;
    return *this;
}

VARIANTARG Arguments::Passed(Argument& argument, ByReference style) {
    if (argument.variable == nullptr) {
        return argument.value.get();  // lent: the callee frees nothing
    }
    argument.value = Variant(*argument.variable);
    VARIANTARG reference;
    VariantInit(&reference);
    if (style == ByReference::Typed) {
        reference.vt = VT_I4 | VT_BYREF;
        reference.plVal = &argument.value.get().lVal;
    } else {
        reference.vt = VT_VARIANT | VT_BYREF;
        reference.pvarVal = &argument.value.get();
    }
    return reference;
}

std::vector<VARIANTARG>& Arguments::Reversed(ByReference style) {
    reversed_.clear();
    reversed_.reserve(arguments_.size());
    for (auto argument = arguments_.rbegin(); argument != arguments_.rend(); ++argument) {
        reversed_.push_back(Passed(*argument, style));
    }
    return reversed_;
}

Result<void> Arguments::WriteBack() const {
    std::vector<std::pair<std::int32_t*, std::int32_t>> written;
    for (const Argument& argument : arguments_) {
        if (argument.variable != nullptr) {
            const Result<std::int32_t> number = ToLong(argument.value.get());
            if (!number) {
                return std::unexpected(number.error());
            }
            written.emplace_back(argument.variable, *number);
        }
    }
    for (const auto& [variable, number] : written) {
        *variable = number;
    }
    return {};
}

}  // namespace lintara::com
