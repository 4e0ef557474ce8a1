// One component's file as the IDE saves it: where its head ends and what the head tells.
#pragma once

#include "base/text.h"
#include "hostmodel/member_kind.h"
#include "workspace/diagnostic.h"
#include "workspace/encoding.h"
#include "workspace/workspace.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace lintara::workspace {

// The characters that the IDE accepts in one line.
inline constexpr std::size_t longestLine = 1023;

// The kind of component that a file of that name holds, by its extension; none for other files. The head of a
// form may tell more.
[[nodiscard]] std::optional<hostmodel::ComponentType> ComponentTypeOf(const std::filesystem::path& path);

struct ComponentFile {
    Text name;  // empty when the head tells none
    hostmodel::ComponentType type = hostmodel::ComponentType::Module;
    EncodingPtr encoding;
    std::size_t codeBegin = 0;  // byte offset of the first line that is not the head
    std::optional<std::vector<DesignerControl>> designer;  // outermost object excepted; none: no designer
    Diagnostics warnings;
};

// Reads the head of the component in `bytes`, which is of kind `type` unless the head tells more. `path` is
// for messages; the encoding is `codePage` unless a byte order mark tells another.
[[nodiscard]] std::expected<ComponentFile, Diagnostic> ParseComponentFile(const std::filesystem::path& path,
                                                                          hostmodel::ComponentType type,
                                                                          std::string_view bytes,
                                                                          const EncodingPtr& codePage);

}  // namespace lintara::workspace
