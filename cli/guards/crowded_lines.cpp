#include "cli/guards/crowded_lines.h"

#include "cli/guards/code_text.h"

#include <algorithm>

namespace lintara::cli {
namespace {

std::size_t CountText(TextView line, TextView sought) {
    std::size_t count = 0;
    for (std::size_t at = FindText(line, sought); at != TextView::npos;
         at = FindText(line, sought, at + sought.size())) {
        ++count;
    }
    return count;
}

}  // namespace

std::optional<std::size_t> FindCrowdedLine(std::span<const Text> lines, TextView sought) {
    const auto crowded = std::ranges::find_if(lines, [&](const Text& line) {
        // Nearly no line is so long that it is worth counting.
        return IsCrowded(line.size() / sought.size(), line.size()) &&
               IsCrowded(CountText(line, sought), line.size());
    });
    return crowded == lines.end() ? std::nullopt : std::optional<std::size_t>(crowded - lines.begin());
}

}  // namespace lintara::cli
