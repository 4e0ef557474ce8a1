#include "cli/options/toml_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <optional>

namespace lintara::cli {
namespace {

// Each pattern is held against every procedure.
constexpr std::size_t mostValues = 10'000;

std::string_view KindOf(const toml::node& value) {
    switch (value.type()) {
        case toml::node_type::string:
            return "a text";
        case toml::node_type::integer:
        case toml::node_type::floating_point:
            return "a number";
        case toml::node_type::boolean:
            return "true or false";
        case toml::node_type::array:
            return "a list";
        case toml::node_type::table:
            return "a table";
        default:
            return "a date or time";
    }
}

std::string_view TakenBy(const OptionInfo& option) {
    switch (option.kind) {
        case OptionKind::Flag:
            return "true or false";
        case OptionKind::Text:
            return "a text or a number";
        case OptionKind::Texts:
            return "a text or a list of texts";
    }
    return "";
}

std::unexpected<TomlError> Wrong(const toml::node& value, std::string what) {
    return std::unexpected(TomlError{value.source().begin.line, std::move(what)});
}

std::string NumberText(const auto& number) {
    std::array<char, 40> digits{};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number.get()).ptr};
}

// One text; none when the value is of another kind.
std::optional<std::string> SingleText(const OptionInfo& option, const toml::node& value) {
    if (const auto* flag = value.as_boolean(); flag != nullptr && option.kind == OptionKind::Flag) {
        return flag->get() ? "true" : "false";
    }
    if (const auto* text = value.as_string(); text != nullptr && option.kind != OptionKind::Flag) {
        return text->get();
    }
    if (option.kind != OptionKind::Text) {
        return std::nullopt;
    }
    if (const auto* number = value.as_integer()) {
        return NumberText(*number);
    }
    if (const auto* number = value.as_floating_point()) {
        return NumberText(*number);
    }
    return std::nullopt;
}

std::expected<std::string, TomlError> CheckedText(const OptionInfo& option, const toml::node& value) {
    const std::string name(option.name);
    auto text = SingleText(option, value);
    if (!text) {
        return Wrong(value,
                     name + " takes " + std::string(TakenBy(option)) + ", not " + std::string(KindOf(value)));
    }
    if (text->empty() && !option.mayBeEmpty) {
        return Wrong(value, name + ": the value is empty");
    }
    if (text->contains('\0')) {
        return Wrong(value, name + ": the value holds a null character");
    }
    return *std::move(text);
}

}  // namespace

std::expected<std::vector<std::string>, TomlError> TomlTexts(const OptionInfo& option,
                                                             const toml::node& value) {
    std::vector<const toml::node*> values;
    const toml::array* list = value.as_array();
    if (list != nullptr && list->size() > mostValues) {
        return Wrong(value, std::string(option.name) + " has " + std::to_string(list->size()) +
                                " values; give at most " + std::to_string(mostValues));
    }
    if (list != nullptr && option.kind == OptionKind::Texts) {
        std::ranges::transform(*list, std::back_inserter(values),
                               [](const auto& element) { return &element; });
    } else {
        values.push_back(&value);
    }
    std::vector<std::string> texts;
    for (const toml::node* single : values) {
        auto text = CheckedText(option, *single);
        if (!text) {
            return std::unexpected(text.error());
        }
        texts.push_back(*std::move(text));
    }
    return texts;
}

}  // namespace lintara::cli
