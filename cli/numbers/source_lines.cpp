#include "cli/numbers/source_lines.h"

#include "workspace/checksum.h"
#include "workspace/raw_line.h"

#include <string>

namespace lintara::cli {

SourceLines::SourceLines(const workspace::Module& module) : encoding_(module.encoding()) {
    const std::string_view bytes = module.originalBytes();
    lines_.reserve(static_cast<std::size_t>(module.CountOfLines()));
    for (std::size_t at = 0; at < bytes.size();) {
        const workspace::RawLine line = workspace::NextRawLine(bytes, at, encoding_);
        lines_.push_back(bytes.substr(line.begin, line.end - line.begin));
        at = line.next;
    }
}

std::string_view SourceLines::BytesOf(std::int64_t fileLine) const {
    const auto index = static_cast<std::size_t>(fileLine - 1);
    return fileLine > 0 && index < lines_.size() ? lines_[index] : std::string_view();
}

Text SourceLines::TextOf(std::int64_t fileLine) const {
    Text text;
    encoding_.Decode(BytesOf(fileLine), text);
    return text;
}

std::uint64_t SourceLines::ChecksumOf(std::int64_t first, std::int64_t last) const {
    std::string bytes;
    for (std::int64_t line = first; line <= last; ++line) {
        bytes += BytesOf(line);
        bytes += '\n';
    }
    return workspace::Checksum(bytes);
}

}  // namespace lintara::cli
