#include "cli/streams.h"

#include "workspace/read_file.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace lintara::cli {

namespace {

// Whether the failed call is worth another try: it was interrupted or, where whoever started this process has
// made the descriptor non-blocking, it can go on now.
bool MayGoOn(int descriptor, short event) {
    if (errno == EAGAIN || errno == EWOULDBLOCK) {
        pollfd ready{.fd = descriptor, .events = event, .revents = 0};
        return ::poll(&ready, 1, -1) > 0 || errno == EINTR;
    }
    return errno == EINTR;
}

}  // namespace

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
        } else if (!MayGoOn(descriptor_, POLLOUT)) {
            readerIsGone_ = errno == EPIPE;
            return false;
        }
    }
    return true;
}

std::expected<std::size_t, std::string> StringSource::Read(std::span<char> buffer) {
    const std::size_t count = text.copy(buffer.data(), buffer.size());
    text.erase(0, count);
    return count;
}

std::expected<std::size_t, std::string> DescriptorSource::Read(std::span<char> buffer) {
    for (;;) {
        const ssize_t count = ::read(descriptor_, buffer.data(), buffer.size());
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (!MayGoOn(descriptor_, POLLIN)) {
            return std::unexpected("standard input cannot be read: " + workspace::SystemMessage(errno));
        }
    }
}

std::expected<std::string, std::string> DescriptorSource::ReadAll() {
    constexpr std::size_t mostInput = std::size_t{1} << 30;
    constexpr std::string_view tooLong = "standard input is longer than 1 GiB, too long for source code";
    if (struct stat status{}; ::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode) &&
                              std::cmp_greater(status.st_size, mostInput)) {
        return std::unexpected(std::string(tooLong));
    }
    std::string bytes;
    std::array<char, 64 * 1024> block{};
    for (;;) {
        const auto count = Read(block);
        if (!count) {
            return std::unexpected(count.error());
        }
        if (*count == 0) {
            return bytes;
        }
        bytes.append(block.data(), *count);
        if (bytes.size() > mostInput) {
            return std::unexpected(std::string(tooLong));
        }
    }
}

}  // namespace lintara::cli
