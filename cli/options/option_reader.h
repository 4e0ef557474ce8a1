// The values of a command's options, each checked for its form. Whatever is wrong throws UsageError with a
// sentence that names the option and, when it was not the command line, where it was given.
#pragma once

#include "cli/options/command_info.h"
#include "cli/options/given_options.h"
#include "cli/options/usage_error.h"

#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

class OptionReader {
  public:
    OptionReader(const CommandInfo& command, GivenOptions given, std::vector<std::string> arguments)
        : command_(&command), given_(std::move(given)), arguments_(std::move(arguments)) {}

    [[nodiscard]] const CommandInfo& command() const { return *command_; }
    [[nodiscard]] const GivenOptions& given() const { return given_; }

    // The argument at that place, "" when it was not given.
    [[nodiscard]] std::string Argument(std::size_t index) const {
        return index < arguments_.size() ? arguments_[index] : std::string();
    }

    // The same run with other values.
    [[nodiscard]] OptionReader With(GivenOptions given) const {
        return {*command_, std::move(given), arguments_};
    }

    [[nodiscard]] bool Has(std::string_view name) const { return given_.Has(name); }
    [[nodiscard]] bool IsOnCommandLine(std::string_view name) const {
        return given_.IsFrom(OptionOrigin::CommandLine, name);
    }
    // False when it was not given.
    [[nodiscard]] bool Flag(std::string_view name) const;
    // None when it was not given.
    [[nodiscard]] std::optional<std::string> TextOf(std::string_view name) const;
    [[nodiscard]] std::vector<std::string> TextsOf(std::string_view name) const;
    [[nodiscard]] std::int32_t WholeNumber(std::string_view name, std::int32_t absent) const;

    // What `parse`, one of options/option_values.h, makes of the option's text.
    template <class Parse>
    [[nodiscard]] auto Parsed(std::string_view name, Parse parse) const {
        using Value = typename decltype(parse(std::string_view(), std::string_view()))::value_type;
        const auto text = TextOf(name);
        if (!text) {
            return std::optional<Value>();
        }
        auto value = parse(LabelOf(name), *text);
        if (!value) {
            throw UsageError(value.error());
        }
        return std::optional<Value>(*std::move(value));
    }

    // How messages name the option: "--base", or ".lintara.toml:3: base".
    [[nodiscard]] std::string LabelOf(std::string_view name) const;

  private:
    const CommandInfo* command_;
    GivenOptions given_;
    std::vector<std::string> arguments_;
};

}  // namespace lintara::cli
