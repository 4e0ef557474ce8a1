// Late-bound access: objects of the host whose members are reached by name at run time, because no declared
// interface has them (a designer's "VBControls", a host form's "tmrMain", the history's collections).
#pragma once

#include "base/result.h"
#include "base/text.h"

#include <cstdint>
#include <memory>
#include <span>
#include <variant>

namespace lintara::hostmodel {

class Dispatch;

// What travels through a late-bound call. monostate is the language's Empty.
using Value = std::variant<std::monostate, bool, std::int32_t, Text, std::shared_ptr<Dispatch>>;

class Dispatch {
  public:
    virtual ~Dispatch() = default;

    // Reads the property `name` (with `arguments` where it is indexed) or calls the method of that name. The
    // default member has the name "": collections give an item by it.
    // Fails with MemberNotSupported when there is no such member; nothing has changed then.
    [[nodiscard]] virtual Result<Value> Invoke(TextView name, std::span<const Value> arguments) = 0;

    // Writes the property `name`. A failing write leaves it at its earlier value.
    [[nodiscard]] virtual Result<void> Put(TextView name, const Value& value) = 0;
};

}  // namespace lintara::hostmodel
