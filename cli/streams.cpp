#include "cli/streams.h"

#include <array>
#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace lintara::cli {

void Sink::Write(std::string_view bytes) {
    if (!failed_ && !bytes.empty()) {
        failed_ = !DoWrite(bytes);
    }
}

bool StringSink::DoWrite(std::string_view bytes) {
    text += bytes;
    return true;
}

bool DescriptorSink::DoWrite(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

std::expected<std::string, std::string> DescriptorSource::ReadAll() {
    std::string bytes;
    std::array<char, 64 * 1024> block{};
    for (;;) {
        const ssize_t count = ::read(descriptor_, block.data(), block.size());
        if (count == 0) {
            return bytes;
        }
        if (count > 0) {
            bytes.append(block.data(), static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return std::unexpected("standard input cannot be read: " +
                                   std::error_code(errno, std::generic_category()).message());
        }
    }
}

}  // namespace lintara::cli
