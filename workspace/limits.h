// What a project may be, at most. A project that somebody else made must not take the machine's memory or
// hours of its time; these are far from what projects are. SECURITY.md names them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lintara::workspace {

inline constexpr std::int64_t largestComponent = std::int64_t{256} << 20;   // bytes
inline constexpr std::int64_t largestProjectFile = std::int64_t{16} << 20;  // bytes, of a group, too
inline constexpr std::int64_t largestOpening = std::int64_t{2}
                                               << 30;  // bytes of all components that are read
inline constexpr std::size_t mostComponents = 50'000;  // of all projects of an opening
inline constexpr std::size_t mostProjects = 1'000;     // of a group
inline constexpr std::size_t longestPath = 4'096;      // bytes of UTF-8, in a project file
// Each line costs memory whatever it holds. The IDE takes 65,534.
inline constexpr std::size_t mostLines = 10'000'000;  // of a component
// Templates write names as often as they like.
inline constexpr std::size_t longestName = 255;  // characters of a project's, component's or procedure's
inline constexpr std::int64_t largestCode = std::int64_t{1} << 20;  // bytes of a template or piece of code
// Bytes that the components of an opening may have after an edit, on top of twice what they had.
inline constexpr std::int64_t mostGrowth = std::int64_t{256} << 20;

// Whether a component with those bytes has more than `mostLines` lines.
[[nodiscard]] bool HasTooManyLines(std::string_view bytes);

}  // namespace lintara::workspace
