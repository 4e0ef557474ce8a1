#include "cli/options/option_reader.h"

#include "cli/options/option_values.h"

namespace lintara::cli {

bool OptionReader::Flag(std::string_view name) const {
    const GivenOption* option = given_.Find(name);
    return option != nullptr && option->texts.back() == "true";
}

std::optional<std::string> OptionReader::TextOf(std::string_view name) const {
    const GivenOption* option = given_.Find(name);
    return option == nullptr ? std::nullopt : std::optional(option->texts.front());
}

std::vector<std::string> OptionReader::TextsOf(std::string_view name) const {
    const GivenOption* option = given_.Find(name);
    return option == nullptr ? std::vector<std::string>() : option->texts;
}

std::int32_t OptionReader::WholeNumber(std::string_view name, std::int32_t absent) const {
    return Parsed(name, ParseWholeNumber).value_or(absent);
}

std::string OptionReader::LabelOf(std::string_view name) const {
    const GivenOption* option = given_.Find(name);
    if (option == nullptr || option->origin == OptionOrigin::CommandLine) {
        return "--" + std::string(name);
    }
    if (option->origin == OptionOrigin::UserSettings) {
        return "the user's setting " + option->place;
    }
    return option->place + ": " + std::string(name);
}

}  // namespace lintara::cli
