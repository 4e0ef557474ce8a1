// What can be told of any source file before its lines are looked at: its encoding, and whether it is text.
#pragma once

#include "workspace/diagnostic.h"
#include "workspace/encoding.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string_view>

namespace lintara::workspace {

struct TextFile {
    EncodingPtr encoding;
    std::size_t begin = 0;  // where the text begins, behind the byte order mark
};

// Recognises the file's encoding: by its byte order mark, else `codePage`. What is no text in it is an error:
// a NUL byte where a character is one byte, half a character at the end where it is two.
[[nodiscard]] std::expected<TextFile, Diagnostic> RecogniseText(const std::filesystem::path& path,
                                                                std::string_view bytes,
                                                                const EncodingPtr& codePage);

// The physical line, from 1, that holds the byte at `offset`.
[[nodiscard]] std::int64_t FileLineAt(std::string_view bytes, std::size_t offset, const TextFile& file);

// A warning when the bytes read like another encoding than the one the file is in.
[[nodiscard]] std::optional<Diagnostic> DoubtAboutEncoding(const std::filesystem::path& path,
                                                           std::string_view bytes, const TextFile& file);

}  // namespace lintara::workspace
