#include "cli/serve/line_reader.h"

#include <array>
#include <utility>

namespace lintara::cli {

std::expected<LineReader::Outcome, std::string> LineReader::Next() {
    Release();
    if (skipping_) {
        const auto more = SkipRest();
        if (!more) {
            return std::unexpected(more.error());
        }
        if (!*more) {
            return Outcome::End;
        }
    }
    for (;;) {
        const std::size_t end = buffer_.find('\n', scanned_);
        const std::size_t size = (end == std::string::npos ? buffer_.size() : end) - begin_;
        if (size > longest_) {
            begin_ = end == std::string::npos ? buffer_.size() : end + 1;
            scanned_ = begin_;
            skipping_ = end == std::string::npos;
            return Outcome::TooLong;
        }
        if (end != std::string::npos) {
            line_ = std::string_view(buffer_).substr(begin_, size);
            begin_ = end + 1;
            scanned_ = begin_;
            return Outcome::Line;
        }
        scanned_ = buffer_.size();
        const auto more = ReadMore();
        if (!more) {
            return std::unexpected(more.error());
        }
        if (!*more) {
            line_ = std::string_view(buffer_).substr(begin_);
            begin_ = buffer_.size();
            scanned_ = begin_;
            return line_.empty() ? Outcome::End : Outcome::Line;
        }
    }
}

std::expected<bool, std::string> LineReader::ReadMore() {
    constexpr std::size_t block = 64 * 1024;
    std::array<char, block> bytes{};
    const auto count = in_.Read(bytes);
    if (!count) {
        return std::unexpected(count.error());
    }
    buffer_.append(bytes.data(), *count);
    return *count > 0;
}

void LineReader::Release() {
    constexpr std::size_t usualRoom = 1024 * 1024;
    line_ = {};
    if (begin_ < buffer_.size() && begin_ < buffer_.size() / 2) {
        return;
    }
    if (buffer_.capacity() > usualRoom) {
        // An assignment would keep the room.
        std::string(buffer_, begin_).swap(buffer_);
    } else {
        buffer_.erase(0, begin_);
    }
    scanned_ -= begin_;
    begin_ = 0;
}

// Whether another line may follow.
std::expected<bool, std::string> LineReader::SkipRest() {
    for (;;) {
        const std::size_t end = buffer_.find('\n', begin_);
        if (end != std::string::npos) {
            begin_ = end + 1;
            scanned_ = begin_;
            skipping_ = false;
            return true;
        }
        buffer_.clear();
        begin_ = 0;
        scanned_ = 0;
        auto more = ReadMore();
        if (!more || !*more) {
            return more;
        }
    }
}

}  // namespace lintara::cli
