#include "cli/serve/arguments.h"

#include "base/utf8.h"
#include "cli/serve/json_number.h"
#include "cli/serve/request_error.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string>

namespace lintara::cli {
namespace {

// Names are a client's own, however long.
std::string Quoted(std::string_view name) {
    constexpr std::size_t longest = 100;
    return '"' + std::string(name.substr(0, longest)) + (name.size() > longest ? " ..." : "") + '"';
}

std::string NamesOf(const MethodInfo& method) {
    std::string names;
    for (const MethodParameter& parameter : method.parameters) {
        names += (names.empty() ? "" : ", ") + parameter.name;
    }
    return names.empty() ? "takes none" : "takes " + names;
}

bool IsEmptyArray(const JsonValue& params) {
    const auto* array = params.As<JsonArray>();
    return array != nullptr && array->empty();
}

}  // namespace

Arguments::Arguments(const MethodInfo& method, const JsonValue* params)
    : method_(&method), values_(method.parameters.size()) {
    if (params != nullptr && !IsEmptyArray(*params)) {
        const auto* object = params->As<JsonObject>();
        if (object == nullptr) {
            Complain("arguments are given by name, as an object");
        }
        Take(*object);
    }
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const MethodParameter& parameter = method.parameters[i];
        if (values_[i].index() == 0 && !parameter.mayBeLeftOut()) {
            Refuse(parameter.name, "is missing");
        }
    }
}

void Arguments::Take(const JsonObject& params) {
    for (const JsonMember& given : params) {
        const std::size_t index = IndexOf(given.name);
        if (index == values_.size()) {
            Complain("there is no argument " + Quoted(given.name) + "; the method " + NamesOf(*method_));
        }
        values_[index] = Read(method_->parameters[index], given.value);
    }
}

Arguments::Value Arguments::Read(const MethodParameter& parameter, const JsonValue& given) const {
    switch (parameter.type) {
        case ArgumentType::Text:
            if (const auto* text = given.As<std::string>()) {
                return FromUtf8(*text);
            }
            Refuse(parameter.name, "has to be a string");
        case ArgumentType::Boolean:
            if (const auto* boolean = given.As<bool>()) {
                return *boolean;
            }
            Refuse(parameter.name, "has to be true or false");
        case ArgumentType::Controls:
            return ReadControls(parameter, given);
        case ArgumentType::Integer:
        case ArgumentType::Long:
            break;
    }
    return ReadNumber(parameter, given);
}

std::int32_t Arguments::ReadNumber(const MethodParameter& parameter, const JsonValue& given) const {
    const bool isShort = parameter.type == ArgumentType::Integer;
    const std::int64_t least =
        isShort ? std::numeric_limits<std::int16_t>::min() : std::numeric_limits<std::int32_t>::min();
    const std::int64_t most =
        isShort ? std::numeric_limits<std::int16_t>::max() : std::numeric_limits<std::int32_t>::max();
    const auto* number = given.As<JsonNumber>();
    if (number == nullptr) {
        Refuse(parameter.name, "has to be a whole number");
    }
    const auto value = WholeValue(number->text);
    if (!value && value.error() == NotWhole::Fraction) {
        Refuse(parameter.name, "has to be a whole number");
    }
    if (!value || *value < least || *value > most) {
        Refuse(parameter.name, "has to be from " + std::to_string(least) + " to " + std::to_string(most));
    }
    return static_cast<std::int32_t>(*value);
}

std::vector<workspace::DesignerControl> Arguments::ReadControls(const MethodParameter& parameter,
                                                                const JsonValue& given) const {
    constexpr std::string_view form = R"(has to be a list of {"name": "...", "className": "..."})";
    const auto* list = given.As<JsonArray>();
    if (list == nullptr) {
        Refuse(parameter.name, form);
    }
    std::vector<workspace::DesignerControl> controls;
    for (const JsonValue& each : *list) {
        const auto* object = each.As<JsonObject>();
        const JsonValue* name = object == nullptr ? nullptr : FindMember(*object, "name");
        const JsonValue* className = object == nullptr ? nullptr : FindMember(*object, "className");
        if (name == nullptr || className == nullptr || object->size() != 2 || !name->As<std::string>() ||
            !className->As<std::string>()) {
            Refuse(parameter.name, form);
        }
        controls.push_back({FromUtf8(*name->As<std::string>()), FromUtf8(*className->As<std::string>())});
    }
    return controls;
}

bool Arguments::Has(std::string_view name) const {
    const std::size_t index = IndexOf(name);
    return index < values_.size() && values_[index].index() != 0;
}

const Text& Arguments::TextOf(std::string_view name) const {
    return Get<Text>(name);
}

std::int32_t Arguments::Long(std::string_view name) const {
    return Get<std::int32_t>(name);
}

std::int16_t Arguments::Integer(std::string_view name) const {
    return static_cast<std::int16_t>(Get<std::int32_t>(name));
}

bool Arguments::Boolean(std::string_view name) const {
    return Get<bool>(name);
}

const std::vector<workspace::DesignerControl>& Arguments::Controls(std::string_view name) const {
    return Get<std::vector<workspace::DesignerControl>>(name);
}

void Arguments::Refuse(std::string_view name, std::string_view why) const {
    Complain("the argument " + Quoted(name) + " " + std::string(why));
}

std::size_t Arguments::IndexOf(std::string_view name) const {
    const auto found = std::ranges::find(method_->parameters, name, &MethodParameter::name);
    return static_cast<std::size_t>(found - method_->parameters.begin());
}

template <class T>
const T& Arguments::Get(std::string_view name) const {
    static const T absent{};
    const std::size_t index = IndexOf(name);
    if (index == values_.size()) {
        throw std::logic_error(method_->name + " reads an argument that it does not have");
    }
    const T* value = std::get_if<T>(&values_[index]);
    return value == nullptr ? absent : *value;
}

void Arguments::Complain(const std::string& message) const {
    throw RequestError(ErrorCode::WrongArguments, method_->name + ": " + message);
}

}  // namespace lintara::cli
