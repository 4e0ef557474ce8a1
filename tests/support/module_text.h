// Modules from readable source text and back: UTF-8, lines that end in LF. A raw string may begin and end on
// lines of its own, see Code.
#pragma once

#include "tests/support/code_fixture.h"
#include "workspace/module.h"

#include <memory>
#include <string>
#include <string_view>

namespace lintara::support {

[[nodiscard]] std::unique_ptr<workspace::Module> ModuleOf(std::string_view source);

// The shown lines joined by LF.
[[nodiscard]] std::string TextOf(const workspace::Module& module);

// What a save would write.
[[nodiscard]] std::string BytesOf(const workspace::Module& module);

}  // namespace lintara::support
