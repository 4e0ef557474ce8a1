#include "workspace/raw_line.h"

#include <algorithm>
#include <cstring>

namespace lintara::workspace {

namespace {

// The offset of the first CR or LF from `from` on; the end of `bytes` when there is none. The search goes in
// windows, so that a file with only one of the two is not searched to its end for the other in every line.
std::size_t FindBreak(std::string_view bytes, std::size_t from) {
    constexpr std::size_t window = 256;
    while (from < bytes.size()) {
        const char* begin = bytes.data() + from;
        const std::size_t size = std::min(window, bytes.size() - from);
        const auto* lineFeed = static_cast<const char*>(std::memchr(begin, '\n', size));
        const std::size_t before = lineFeed != nullptr ? static_cast<std::size_t>(lineFeed - begin) : size;
        const auto* carriageReturn = static_cast<const char*>(std::memchr(begin, '\r', before));
        if (carriageReturn != nullptr) {
            return from + static_cast<std::size_t>(carriageReturn - begin);
        }
        if (lineFeed != nullptr) {
            return from + before;
        }
        from += size;
    }
    return bytes.size();
}

RawLine NextLineOfUnits(std::string_view bytes, std::size_t from, bool bigEndian) {
    const std::size_t high = bigEndian ? 0 : 1;
    const auto unitIs = [&](std::size_t at, char value) {
        return at + 2 <= bytes.size() && bytes[at + high] == '\0' && bytes[at + 1 - high] == value;
    };
    for (std::size_t at = from; at + 2 <= bytes.size(); at += 2) {
        if (unitIs(at, '\n')) {
            return {from, at, at + 2};
        }
        if (unitIs(at, '\r')) {
            return {from, at, unitIs(at + 2, '\n') ? at + 4 : at + 2};
        }
    }
    return {from, bytes.size(), bytes.size()};
}

}  // namespace

RawLine NextRawLine(std::string_view bytes, std::size_t from, const Encoding& encoding) {
    if (encoding.unitSize() == 2) {
        return NextLineOfUnits(bytes, from, encoding.bigEndian());
    }
    const std::size_t end = FindBreak(bytes, from);
    if (end == bytes.size()) {
        return {from, end, end};
    }
    const bool two = bytes[end] == '\r' && end + 1 < bytes.size() && bytes[end + 1] == '\n';
    return {from, end, two ? end + 2 : end + 1};
}

}  // namespace lintara::workspace
