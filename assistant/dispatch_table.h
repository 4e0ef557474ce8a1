// The dispatch interface of `Lintara` as data: its members in order, under the names and with the parameters
// that late-bound callers use. Whoever offers the class by name (a component server, a message endpoint)
// reads it here; the signatures in lintara.h follow it.
#pragma once

#include "base/text.h"

#include <optional>
#include <span>

namespace lintara::assistant {

enum class Access { Method, Get, Put, PutReference };

// Integer has 16 bits, Long has 32; a Boolean has 16, and true is -1.
enum class ValueType { Text, Integer, Long, Boolean, Object };

// Whether the caller's variable is read, written, or both.
enum class Direction { In, Out, InOut };

struct Parameter {
    TextView name;
    ValueType type;
    Direction direction = Direction::In;
};

struct DispatchMember {
    int number;  // from 1; a property's reads and writes are members of their own
    TextView name;
    Access access;
    std::span<const Parameter> parameters;  // a written value comes last
    std::optional<ValueType> result;
};

// All members, by their numbers.
[[nodiscard]] std::span<const DispatchMember> DispatchTable();

// Null when there is no such member. Names count without regard to the case of the letters A to Z.
[[nodiscard]] const DispatchMember* FindDispatchMember(TextView name, Access access);

}  // namespace lintara::assistant
