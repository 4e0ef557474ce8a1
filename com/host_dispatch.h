// A late-bound object of the host as `hostmodel::Dispatch`, and values on their way between the two.
#pragma once

#include "com/late_bound.h"
#include "hostmodel/dispatch.h"

#include <memory>
#include <span>

namespace lintara::com {

class HostDispatch final : public hostmodel::Dispatch {
  public:
    explicit HostDispatch(LateBound object) : object_(std::move(object)) {}

    [[nodiscard]] const LateBound& object() const { return object_; }

    Result<hostmodel::Value> Invoke(TextView name, std::span<const hostmodel::Value> arguments) override;
    Result<void> Put(TextView name, const hostmodel::Value& value) override;

  private:
    LateBound object_;
};

// What a call gave. Numbers of all kinds are whole numbers afterwards, dates are texts; Null and arrays are
// type mismatches. Objects that come of one another share `ids`.
[[nodiscard]] Result<hostmodel::Value> ValueOf(const VARIANT& value, const std::shared_ptr<MemberIds>& ids);

// The value as an argument. An object that is none of the host's is a type mismatch.
[[nodiscard]] Result<Variant> VariantOf(const hostmodel::Value& value);

// The object that a call gave; null for the language's Nothing.
[[nodiscard]] Result<std::shared_ptr<hostmodel::Dispatch>> DispatchOf(const VARIANT& value,
                                                                      const std::shared_ptr<MemberIds>& ids);

}  // namespace lintara::com
