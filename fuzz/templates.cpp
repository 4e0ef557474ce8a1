// Templates over code: values replace their placeholders by plain replacement, and nothing else changes.
#include "transform/templates.h"

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "tests/support/code_fixture.h"
#include "tests/support/fixed_clock.h"

#include <string_view>

namespace lintara::fuzz {
namespace {

// Plain replacement, character by character.
Text Replaced(TextView text, TextView find, TextView replacement) {
    Text result;
    for (std::size_t at = 0; at < text.size();) {
        if (!find.empty() && !replacement.empty() && text.substr(at).starts_with(find)) {
            result += replacement;
            at += find.size();
        } else {
            result += text[at++];
        }
    }
    return result;
}

constexpr std::string_view source = R"(
Option Explicit
Private Sub cmdOK_Click()
    x = 1^
End Sub
)";

void CheckTemplates(Input& input) {
    const Text find = input.ShortText(6);
    const Text replacement = input.ShortText(6);
    const Text component = input.ShortText(10);
    const Text member = input.ShortText(12);
    const Text code = input.RestAsText();
    RequireSame(transform::ReplaceAll(code, find, replacement), Replaced(code, find, replacement),
                "every occurrence is replaced, from left to right");

    support::CodeFixture fixture(source);
    support::FixedClock clock;
    support::FixedRegionalTexts regional;
    const transform::TemplateSources sources{*fixture.globals(), &clock, &regional};
    const std::string before = fixture.text();
    const Text here = transform::ParsePseudoCode(sources, code);
    const Text there = transform::ParsePseudoCodeEx(sources, code, component, member);
    if (code.find(u'{') == Text::npos) {
        RequireSame(here, code, "a text without placeholders stays");
        RequireSame(there, code, "a text without placeholders stays");
    }
    (void)transform::GeneratePseudoCode(sources, code);
    RequireSame(fixture.text(), before, "templates change no code");
    Require(fixture.globals()->liveHandles() == 0, "every handle is given back");
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::CheckTemplates(input);
    return 0;
}
