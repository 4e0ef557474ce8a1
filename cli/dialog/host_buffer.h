// The copy-and-paste buffer of the program, as the dialogs exchange text with it. A command lives for one
// dialog, so between them the buffer lies in a file of the user's.
#pragma once

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>

namespace lintara::cli {

class HostBuffer {
  public:
    // `stateFolder` is that of the environment; where it is empty, so is the buffer at all times.
    explicit HostBuffer(const std::filesystem::path& stateFolder);

    // UTF-8. A buffer that cannot be read is empty.
    [[nodiscard]] std::string Read() const;
    // Replaces the text. The error is a sentence that names the file; the earlier text is still there then.
    [[nodiscard]] std::expected<void, std::string> Write(std::string_view text) const;

  private:
    std::filesystem::path file_;
};

}  // namespace lintara::cli
