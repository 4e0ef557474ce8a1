// Makes up code modules that are as nasty as text files get, for tests of what must hold whatever the code
// holds: unclosed and nested procedures, numbers that stand there already, labels in odd places, directives,
// broken continuations, mixed line endings, tabs, bytes that the code page leaves undefined. No NUL bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace lintara::support {

struct WildOptions {
    std::size_t lines = 120;  // about as many
    std::uint64_t seed = 1;
};

// The bytes of a module file with a name attribute at its top. The same options give the same bytes.
[[nodiscard]] std::string GenerateWildModule(const WildOptions& options);

}  // namespace lintara::support
