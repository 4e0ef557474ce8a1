// An automation object of a test's host: members by name, each a function of the call.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "com/com_ptr.h"
#include "tests/com/late_bound_host.h"

#include <concepts>
#include <cstdint>
#include <functional>
#include <oaidl.h>
#include <string>
#include <vector>

namespace lintara::support {

// One call of a member. Arguments that are not of the type that is asked for throw a mismatch, which the call
// returns.
class TestCall {
  public:
    TestCall(WORD kind, DISPPARAMS& parameters, VARIANT* result, LateBoundHost& host)
        : kind_(kind), parameters_(parameters), result_(result), host_(host) {}

    [[nodiscard]] bool IsPut() const {
        return (kind_ & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    }
    [[nodiscard]] bool IsSet() const { return (kind_ & DISPATCH_PROPERTYPUTREF) != 0; }
    [[nodiscard]] std::size_t count() const { return parameters_.cArgs; }
    [[nodiscard]] VARIANTARG& argument(std::size_t place) const;
    [[nodiscard]] TextView text(std::size_t place) const;
    [[nodiscard]] std::int32_t number(std::size_t place) const;
    [[nodiscard]] bool truth(std::size_t place) const;
    // What the caller's variable holds, and its new value.
    [[nodiscard]] std::int32_t referred(std::size_t place) const;
    void Write(std::size_t place, std::int32_t number) const;

    HRESULT Reply(TextView text) const;
    HRESULT Reply(std::int32_t number) const;
    HRESULT Reply(std::same_as<bool> auto value) const { return ReplyTruth(value); }
    HRESULT Reply(const com::ComPtr<IDispatch>& object) const;

  private:
    HRESULT ReplyTruth(bool value) const;

    WORD kind_;
    DISPPARAMS& parameters_;
    VARIANT* result_;
    LateBoundHost& host_;
};

// What a member throws to have the call return a code.
struct CallFails {
    HRESULT code;
    HostError error = {};
};

using TestMember = std::function<HRESULT(const TestCall&)>;
struct NamedMember {
    Text name;  // "" is the default member
    TestMember member;
};

// `anyMember` answers for all other names, where it is given.
[[nodiscard]] com::ComPtr<IDispatch> MakeTestObject(
    std::string type, LateBoundHostPtr host, std::vector<NamedMember> members,
    std::function<HRESULT(const Text& name, const TestCall&)> anyMember = nullptr);

// The value of a result, or its error thrown.
template <class T>
T Checked(Result<T> result) {
    if (!result) {
        throw CallFails{DISP_E_EXCEPTION, result.error()};
    }
    if constexpr (!std::is_void_v<T>) {
        return *std::move(result);
    }
}

}  // namespace lintara::support
