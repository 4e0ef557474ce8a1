// What "lintara check" finds: where code is not as its team wants it.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "cli/scope/procedure_groups.h"

#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

struct Finding {
    std::string_view code;  // "stale-number" and so on; part of the report's format
    Line at;                // of the input
    Text procedure;
    std::string_view kind;
    std::string message;
};

using Findings = std::vector<Finding>;

}  // namespace lintara::cli
