// Something that speaks against the whole command, found while it edits: nothing is written. The message
// names the options that it is about.
#pragma once

#include <stdexcept>

namespace lintara::cli {

class Refusal : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace lintara::cli
