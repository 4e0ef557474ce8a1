// Patterns for names: `*` stands for any run of characters, `?` for one, letter case does not matter.
#pragma once

#include "base/text.h"

namespace lintara::cli {

class Wildcard {
  public:
    explicit Wildcard(TextView pattern);

    [[nodiscard]] bool Matches(TextView name) const;

  private:
    Text folded_;
};

}  // namespace lintara::cli
