// What the declarations section of a module declares, as the IDE's member list shows it.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/member_kind.h"
#include "workspace/line_buffer.h"

#include <cstdint>
#include <vector>

namespace lintara::workspace {

struct MemberInfo {
    Text name;
    hostmodel::MemberType type = hostmodel::MemberType::Method;
    Line codeLocation;  // the first physical line of the declaration or header
};

struct Declarations {
    // Variables, events, constants and Declare lines; the fields of Type and Enum blocks are no members.
    std::vector<MemberInfo> members;
    // The last line above the first procedure's header that is part of a logical line with code; 0 if none.
    std::int32_t countOfLines = 0;
};

// Reads the lines above `firstHeader`; in a module without procedures, that is the line after the last.
[[nodiscard]] Declarations ReadDeclarations(const LineBuffer& lines, Line firstHeader);

}  // namespace lintara::workspace
