// The buffers out of a code database of the old format.
#pragma once

#include "base/text.h"
#include "platform/isolated_call.h"

#include <array>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>

namespace lintara::platform {

inline constexpr std::size_t JetBufferCount = 10;

// By their numbers; none for a buffer without a row.
using JetBuffers = std::array<std::optional<Text>, JetBufferCount>;

// Reads the file and changes nothing in it. A damaged one is an error, never a crash, and takes no longer
// than the limits say. The error continues a sentence about the file: "it is damaged".
[[nodiscard]] std::expected<JetBuffers, std::string> ReadJetBuffers(const std::filesystem::path& file,
                                                                    const IsolationLimits& limits = {});

}  // namespace lintara::platform
