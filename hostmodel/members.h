// The member list of a code module.
#pragma once

#include "base/position.h"
#include "base/result.h"
#include "base/text.h"
#include "hostmodel/member_kind.h"

#include <cstdint>
#include <memory>

namespace lintara::hostmodel {

class Member {
  public:
    virtual ~Member() = default;

    // The first physical line of the member's declaration or header.
    [[nodiscard]] virtual Result<Line> CodeLocation() = 0;
    [[nodiscard]] virtual Result<MemberType> Type() = 0;
};

class Members {
  public:
    virtual ~Members() = default;

    // By name, without regard to case, the first of several; fails when there is none.
    [[nodiscard]] virtual Result<std::shared_ptr<Member>> Item(TextView name) = 0;
    // By index from 1, in order of appearance; fails outside the list.
    [[nodiscard]] virtual Result<std::shared_ptr<Member>> Item(std::int32_t index) = 0;
};

}  // namespace lintara::hostmodel
