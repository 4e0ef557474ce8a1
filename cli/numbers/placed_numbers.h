// The numbers that stand in front of lines now, with the lines of the source that they stand for: what a
// crash report names, and what people look up.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "cli/numbers/source_lines.h"
#include "workspace/module.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

// A line of the source: as the IDE shows it, and as a line of the file.
struct SourcePlace {
    Line line;
    std::int64_t fileLine = 0;

    friend bool operator==(const SourcePlace&, const SourcePlace&) = default;
};

struct PlacedNumber {
    std::int64_t number = 0;
    // Of a line that was inserted: the procedure's header when it stands ahead of all of the procedure's own
    // lines, else its closing line.
    SourcePlace source;
    bool inserted = false;
    Line now;  // where it stands in the module now

    friend bool operator==(const PlacedNumber&, const PlacedNumber&) = default;
};

struct NumberedProcedure {
    Text name;
    std::string kind;  // "Sub", "Property Get" ...
    SourcePlace header;
    std::uint64_t checksum = 0;  // of its lines in the source
    std::vector<PlacedNumber> numbers = {};
};

// The number that a line begins with, if any: of any form that the language knows, behind blanks too.
[[nodiscard]] std::optional<std::int64_t> NumberAtStart(TextView line);

// All procedures of the module with the numbers in their bodies, in order. `source` is the module's own.
[[nodiscard]] std::vector<NumberedProcedure> PlacedNumbersOf(const workspace::Module& module,
                                                             const SourceLines& source);

}  // namespace lintara::cli
