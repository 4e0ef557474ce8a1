#include "cli/streams.h"

#include <cerrno>
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

}  // namespace lintara::cli
