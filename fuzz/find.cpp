// Searches between edits against a search over the joined text that remembers nothing.
#include "fuzz/edits.h"
#include "fuzz/input.h"
#include "fuzz/lines.h"
#include "fuzz/require.h"
#include "hostmodel/code_module.h"
#include "tests/support/reference_module.h"
#include "workspace/module.h"

#include <string>

namespace lintara::fuzz {
namespace {

Position PlaceIn(Input& input, const support::ReferenceModule& reference) {
    return {Line{input.Between<std::int32_t>(-2, reference.CountOfLines() + 2)},
            Column{input.Between<std::int32_t>(-2, 70)}};
}

std::string Shown(Position start, Position end) {
    return std::to_string(start.line.value()) + ":" + std::to_string(start.column.value()) + " to " +
           std::to_string(end.line.value()) + ":" + std::to_string(end.column.value());
}

void Search(Input& input, const workspace::Module& module, const support::ReferenceModule& reference,
            TextView target) {
    Position start = PlaceIn(input, reference);
    Position end = PlaceIn(input, reference);
    const hostmodel::FindOptions options{
        .wholeWord = input.Flag(), .matchCase = input.Flag(), .patternSearch = input.Flag()};
    const auto expected = reference.Find(target, start, end, options);
    const std::string before = Shown(start, end);
    const bool found = module.Find(target, start, end, options);
    Require(found == expected.has_value(), "a text is found where it stands", ToUtf8(target) + " " + before);
    RequireSame(Shown(start, end), expected ? Shown(expected->first, expected->second) : before,
                "the place of a match is told, and nothing without one");
}

void CheckSearches(Input& input) {
    const auto module = workspace::Module::FromText(input.ShortText(400));
    support::ReferenceModule reference = ReferenceOf(*module);
    Text target = input.ShortText(12);
    while (!input.empty()) {
        if (input.Flag()) {
            EditBoth(input, *module, reference);
            TakeKeywordCase(*module, reference);
        }
        if (input.Flag()) {
            target = input.ShortText(12);
        }
        Search(input, *module, reference, target);
    }
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::CheckSearches(input);
    return 0;
}
