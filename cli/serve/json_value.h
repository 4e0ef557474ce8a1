// A JSON value as a client has sent it: numbers keep their digits, so that an id can be given back as it
// came.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lintara::cli {

struct JsonNumber {
    std::string text;
};

struct JsonMember;
struct JsonValue;
using JsonArray = std::vector<JsonValue>;
using JsonObject = std::vector<JsonMember>;

struct JsonValue {
    std::variant<std::nullptr_t, bool, JsonNumber, std::string, JsonArray, JsonObject> value;

    template <class T>
    [[nodiscard]] const T* As() const {
        return std::get_if<T>(&value);
    }
};

struct JsonMember {
    std::string name;
    JsonValue value;
};

// Null when there is no such member.
[[nodiscard]] inline const JsonValue* FindMember(const JsonObject& object, std::string_view name) {
    for (const JsonMember& member : object) {
        if (member.name == name) {
            return &member.value;
        }
    }
    return nullptr;
}

}  // namespace lintara::cli
