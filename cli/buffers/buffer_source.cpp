#include "cli/buffers/buffer_source.h"

#include "cli/buffers/code_database.h"
#include "cli/options/option_values.h"
#include "cli/project/text_source.h"

namespace lintara::cli {

std::expected<std::int32_t, std::string> ParseBufferNumber(std::string_view name, std::string_view text) {
    const auto number = ParseWholeNumber(name, text);
    if (number && *number == 10) {
        return std::unexpected(
            std::string(name) +
            ": buffer 10 lives only in the memory of a session and is never stored; give a "
            "number from 0 to 9");
    }
    if (!number || *number < 0 || *number > 9) {
        return std::unexpected(std::string(name) + ": '" + std::string(text) +
                               "' is no buffer; give a number from 0 to 9");
    }
    return number;
}

OptionInfo BufferOption(std::string_view group) {
    return ValueOption("buffer", "N", "Take it from this buffer, 0 to 9; see 'lintara buffer'", group);
}

std::optional<Text> ReadBufferSource(const OptionReader& given, std::string_view other,
                                     Environment& environment) {
    const auto number = given.Parsed("buffer", ParseBufferNumber);
    if (!number) {
        return std::nullopt;
    }
    Require(other.empty() || !given.IsOnCommandLine(other),
            "--buffer and --" + std::string(other) + " are two sources of one text; give one");
    return WithLineBreaks(CodeDatabase::Find({}, environment).Read(*number));
}

}  // namespace lintara::cli
