// The arguments of one request, checked against the method's parameters: each name known, none missing, types
// and ranges as the method has them.
#pragma once

#include "base/text.h"
#include "cli/serve/json_value.h"
#include "cli/serve/method.h"
#include "workspace/workspace.h"

#include <cstdint>
#include <string_view>
#include <variant>
#include <vector>

namespace lintara::cli {

class Arguments {
  public:
    // `params` is null when the request has none. Throws RequestError, which names the argument. The method
    // must outlive this.
    Arguments(const MethodInfo& method, const JsonValue* params);

    [[nodiscard]] bool Has(std::string_view name) const;

    // The name must be one of the method's parameters of that type; what was left out is empty, 0 or false.
    [[nodiscard]] const Text& TextOf(std::string_view name) const;
    [[nodiscard]] std::int32_t Long(std::string_view name) const;
    [[nodiscard]] std::int16_t Integer(std::string_view name) const;
    [[nodiscard]] bool Boolean(std::string_view name) const;
    [[nodiscard]] const std::vector<workspace::DesignerControl>& Controls(std::string_view name) const;

    // Something is wrong with the argument that the method alone could see.
    [[noreturn]] void Refuse(std::string_view name, std::string_view why) const;

  private:
    using Value =
        std::variant<std::monostate, Text, std::int32_t, bool, std::vector<workspace::DesignerControl>>;

    void Take(const JsonObject& params);
    [[nodiscard]] Value Read(const MethodParameter& parameter, const JsonValue& given) const;
    [[nodiscard]] std::int32_t ReadNumber(const MethodParameter& parameter, const JsonValue& given) const;
    [[nodiscard]] std::vector<workspace::DesignerControl> ReadControls(const MethodParameter& parameter,
                                                                       const JsonValue& given) const;
    [[nodiscard]] std::size_t IndexOf(std::string_view name) const;
    template <class T>
    [[nodiscard]] const T& Get(std::string_view name) const;
    [[noreturn]] void Complain(const std::string& message) const;

    const MethodInfo* method_;
    std::vector<Value> values_;  // of each parameter
};

}  // namespace lintara::cli
