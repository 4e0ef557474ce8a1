#include "cli/dialog/host_buffer.h"

#include "base/utf8.h"
#include "cli/output/terminal_text.h"
#include "platform/locked_file.h"

#include <chrono>
#include <cstddef>

namespace lintara::cli {
namespace {

constexpr std::size_t largestBuffer = std::size_t{1} << 26;
constexpr std::chrono::milliseconds patience(500);

}  // namespace

HostBuffer::HostBuffer(const std::filesystem::path& stateFolder)
    : file_(stateFolder.empty() ? stateFolder : stateFolder / "copy-and-paste.txt") {}

std::string HostBuffer::Read() const {
    if (file_.empty()) {
        return {};
    }
    const auto bytes = platform::ReadSmallFile(file_, largestBuffer);
    return bytes && *bytes ? ToUtf8(FromUtf8(**bytes)) : std::string();
}

std::expected<void, std::string> HostBuffer::Write(std::string_view text) const {
    if (file_.empty()) {
        return {};
    }
    const auto complain = [this](const std::string& what) {
        return std::unexpected(PrintablePath(file_) + " " + what);
    };
    const auto locked = platform::LockedFile::Open(file_, patience);
    if (!locked) {
        return complain(locked.error());
    }
    if (const auto replaced = locked->Replace(text); !replaced) {
        return complain(replaced.error());
    }
    return {};
}

}  // namespace lintara::cli
