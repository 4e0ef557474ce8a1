// A command line, or a project file, that asks for what cannot be. The message is a sentence for people that
// names the option and where it was given.
#pragma once

#include <stdexcept>
#include <string>

namespace lintara::cli {

class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Throws UsageError unless `condition` holds.
inline void Require(bool condition, const std::string& complaint) {
    if (!condition) {
        throw UsageError(complaint);
    }
}

}  // namespace lintara::cli
