// What the adapters of the host's objects are made of: a late-bound object, and calls whose values are taken
// as the type that the interface names. Where the host gives Nothing, the handle is null.
#pragma once

#include "base/position.h"
#include "base/result.h"
#include "base/text.h"
#include "com/conversion.h"
#include "com/host_dispatch.h"
#include "com/late_bound.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace lintara::com {

class HostObject {
  public:
    explicit HostObject(LateBound object) : object_(std::move(object)) {}

    [[nodiscard]] const LateBound& object() const { return object_; }

  protected:
    ~HostObject() = default;
    HostObject(const HostObject&) = default;
    HostObject& operator=(const HostObject&) = default;

    [[nodiscard]] Result<Text> GetText(TextView name, Arguments arguments = {}) const {
        return Then(object_.Get(name, std::move(arguments)),
                    [](const Variant& value) { return ToText(value.get()); });
    }
    [[nodiscard]] Result<std::int32_t> GetLong(TextView name, Arguments arguments = {}) const {
        return Then(object_.Get(name, std::move(arguments)),
                    [](const Variant& value) { return ToLong(value.get()); });
    }
    [[nodiscard]] Result<Line> GetLine(TextView name, Arguments arguments = {}) const {
        return Then(GetLong(name, std::move(arguments)),
                    [](std::int32_t number) { return Result<Line>(Line{number}); });
    }
    [[nodiscard]] Result<bool> GetBoolean(TextView name, Arguments arguments = {}) const {
        return Then(object_.Get(name, std::move(arguments)),
                    [](const Variant& value) { return ToBoolean(value.get()); });
    }
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Dispatch>> GetDispatch(TextView name) const {
        return Then(object_.Get(name),
                    [&](const Variant& value) { return DispatchOf(value.get(), object_.ids()); });
    }

    // The object that a member yields; null for Nothing.
    [[nodiscard]] Result<ComPtr<IDispatch>> FindObject(TextView name, Arguments arguments = {}) const {
        return Then(object_.Get(name, std::move(arguments)),
                    [](const Variant& value) { return ToObject(value.get()); });
    }

    // An object as an adapter of the class Adapter, under its interface.
    template <class Interface, class Adapter>
    [[nodiscard]] Result<std::shared_ptr<Interface>> GetObjectAs(TextView name,
                                                                 Arguments arguments = {}) const {
        const auto adapt = [&](const ComPtr<IDispatch>& found) -> Result<std::shared_ptr<Interface>> {
            if (found == nullptr) {
                return nullptr;
            }
            return std::make_shared<Adapter>(LateBound(found, object_.ids()));
        };
        return Then(FindObject(name, std::move(arguments)), adapt);
    }

    // Arguments from texts, numbers and truths.
    template <class... Values>
    [[nodiscard]] static Arguments With(const Values&... values) {
        Arguments arguments;
        (arguments.Add(values), ...);
        return arguments;
    }

  private:
    LateBound object_;
};

}  // namespace lintara::com
