#include "cli/serve/json_reader.h"

#include "cli/serve/json_number.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include <nlohmann/json.hpp>

namespace lintara::cli {
namespace {

using nlohmann::json;

std::string Shortened(std::string_view text) {
    constexpr std::size_t longest = 200;
    return std::string(text.substr(0, longest)) + (text.size() > longest ? " ..." : "");
}

// What the parser says, without its own error numbers; it quotes what it read last, however long.
std::string Sentence(const json::exception& exception) {
    std::string_view text = exception.what();
    text.remove_prefix(std::min(text.find("] ") + 2, text.size()));
    return "the line is no JSON: " + Shortened(text);
}

// The name that stands in `object` more than once.
std::optional<std::string> DoubleName(const JsonObject& object) {
    std::vector<std::string_view> names;
    names.reserve(object.size());
    for (const JsonMember& member : object) {
        names.push_back(member.name);
    }
    std::ranges::sort(names);
    const auto found = std::ranges::adjacent_find(names);
    return found == names.end() ? std::nullopt : std::optional<std::string>(*found);
}

// Builds the value from what the parser reports; `false` ends the parsing.
class Builder final : public nlohmann::json_sax<json> {
  public:
    // `replaced` are the numbers behind the stand-ins.
    explicit Builder(std::span<const std::string> replaced) : replaced_(replaced) {}

    bool null() override { return Add({nullptr}); }
    bool boolean(bool value) override { return Add({value}); }
    bool number_integer(json::number_integer_t value) override {
        // Zero comes this way with a minus sign only.
        return Add({JsonNumber{value == 0 ? "-0" : std::to_string(value)}});
    }
    bool number_unsigned(json::number_unsigned_t value) override {
        return Add({JsonNumber{std::to_string(value)}});
    }
    bool number_float(json::number_float_t, const json::string_t& text) override {
        if (text == numberStandIn && !replaced_.empty()) {
            const std::string& number = replaced_.front();
            replaced_ = replaced_.subspan(1);
            return Add({JsonNumber{number}});
        }
        std::string number = text;
        // The parser writes the decimal point of the user's language.
        std::ranges::replace_if(
            number, [](char c) { return !std::string_view("0123456789+-eE").contains(c); }, '.');
        return Add({JsonNumber{std::move(number)}});
    }
    bool string(json::string_t& text) override { return Add({std::move(text)}); }
    bool binary(json::binary_t&) override { return Refuse("the line is no JSON"); }

    bool start_object(std::size_t) override { return Open({JsonObject()}); }
    bool key(json::string_t& name) override {
        open_.back().name = std::move(name);
        return true;
    }
    bool end_object() override {
        const auto name = DoubleName(std::get<JsonObject>(open_.back().value.value));
        return name ? Refuse("the name \"" + Shortened(*name) + "\" stands twice in one object") : Close();
    }
    bool start_array(std::size_t) override { return Open({JsonArray()}); }
    bool end_array() override { return Close(); }

    bool parse_error(std::size_t, const std::string&, const json::exception& exception) override {
        constexpr int outOfRange = 406;
        numberBeyondRange_ = exception.id == outOfRange;
        return Refuse(Sentence(exception));
    }

    [[nodiscard]] bool numberBeyondRange() const { return numberBeyondRange_; }
    [[nodiscard]] std::string& error() { return error_; }
    [[nodiscard]] JsonValue& result() { return result_; }

  private:
    // An array or object that is not complete, and of an object the name of the member that comes next.
    struct Container {
        JsonValue value;
        std::string name;
    };

    bool Refuse(std::string error) {
        error_ = std::move(error);
        return false;
    }

    bool Add(JsonValue value) {
        if (++count_ > mostValues) {
            return Refuse("the line holds more than " + std::to_string(mostValues) + " values");
        }
        Put(std::move(value));
        return true;
    }

    void Put(JsonValue value) {
        if (open_.empty()) {
            result_ = std::move(value);
        } else if (auto* array = std::get_if<JsonArray>(&open_.back().value.value)) {
            array->push_back(std::move(value));
        } else {
            std::get<JsonObject>(open_.back().value.value)
                .push_back({std::move(open_.back().name), std::move(value)});
        }
    }

    bool Open(JsonValue container) {
        if (open_.size() == deepestNesting) {
            return Refuse("the line nests values deeper than " + std::to_string(deepestNesting) + " levels");
        }
        if (++count_ > mostValues) {
            return Refuse("the line holds more than " + std::to_string(mostValues) + " values");
        }
        open_.push_back({std::move(container), {}});
        return true;
    }

    bool Close() {
        JsonValue value = std::move(open_.back().value);
        open_.pop_back();
        Put(std::move(value));
        return true;
    }

    std::span<const std::string> replaced_;
    std::vector<Container> open_;
    std::size_t count_ = 0;
    JsonValue result_;
    std::string error_;
    bool numberBeyondRange_ = false;
};

}  // namespace

std::expected<JsonValue, std::string> ReadJson(std::string_view line) {
    // The parser would take it for the end.
    if (line.contains('\0')) {
        return std::unexpected("the line is no JSON: it holds a NUL");
    }
    Builder builder({});
    if (json::sax_parse(line, &builder)) {
        return std::move(builder.result());
    }
    if (!builder.numberBeyondRange()) {
        return std::unexpected(std::move(builder.error()));
    }
    const TamedNumbers tamed = TameNumbers(line);
    Builder second(tamed.replaced);
    if (json::sax_parse(tamed.text, &second)) {
        return std::move(second.result());
    }
    return std::unexpected(std::move(second.error()));
}

}  // namespace lintara::cli
