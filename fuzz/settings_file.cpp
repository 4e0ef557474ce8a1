// Any bytes as a settings file: it is read or refused with a reason; a key that is written holds what was
// written, and every other key what it held.
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "platform/toml_document.h"

#include <array>
#include <optional>
#include <string>

namespace lintara::fuzz {
namespace {

constexpr std::array<TextView, 4> sections = {u"Assistants", u"a", u"", u"x.\"y\""};
constexpr std::array<TextView, 5> keys = {u"EHCode", u"k", u"", u"a b", u"\u00E4"};

using Found = std::expected<std::optional<Text>, platform::TomlError>;

bool Same(const Found& a, const Found& b) {
    return a.has_value() == b.has_value() && (!a || *a == *b);
}

void CheckDocument(Input& input) {
    const TextView section = input.Pick(sections);
    const TextView key = input.Pick(keys);
    const Text value = input.ShortText(30);
    const std::string bytes = input.Rest();
    const auto document = platform::TomlDocument::Parse(bytes);
    if (!document) {
        Require(!document.error().what.empty(), "a refusal has a reason");
        return;
    }
    const auto written = document->With(section, key, value);
    // Where a file has to be written anew, the library for TOML does not quote every key that needs it.
    const bool mayFail = bytes.find_first_of("'\"") != std::string::npos;
    const bool isReadable = document->Find(section, key).has_value();
    Require(written.has_value() == isReadable || (isReadable && mayFail), "what can be read can be written");
    if (!written) {
        Require(!written.error().what.empty(), "a refusal has a reason");
        return;
    }
    const auto again = platform::TomlDocument::Parse(*written);
    Require(again.has_value(), "what is written is read again", *written);
    for (const TextView otherSection : sections) {
        for (const TextView otherKey : keys) {
            const Found found = again->Find(otherSection, otherKey);
            if (otherSection == section && otherKey == key) {
                Require(found && *found, "what is written is there", *written);
                RequireSame(**found, value, "what is written is read as it was");
            } else {
                Require(Same(found, document->Find(otherSection, otherKey)), "other keys keep their values",
                        *written);
            }
        }
    }
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::CheckDocument(input);
    return 0;
}
