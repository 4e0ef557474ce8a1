#include "workspace/text_file.h"

#include "base/utf8.h"
#include "workspace/raw_line.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace lintara::workspace {

namespace {

// The name of the UTF-16 that `bytes` seem to be: every other byte of most source text in it is 0.
std::optional<std::string> GuessUtf16(std::string_view bytes) {
    const std::string_view sample =
        bytes.substr(0, std::min<std::size_t>(bytes.size(), 4096) & ~std::size_t{1});
    std::size_t zeros[2] = {0, 0};
    for (std::size_t i = 0; i < sample.size(); ++i) {
        zeros[i & 1] += sample[i] == '\0' ? 1 : 0;
    }
    const std::size_t many = sample.size() / 4;
    if (zeros[1] > many && zeros[0] < zeros[1] / 8) {
        return "utf-16le";
    }
    if (zeros[0] > many && zeros[1] < zeros[0] / 8) {
        return "utf-16be";
    }
    return std::nullopt;
}

std::string NulMessage(std::string_view bytes, const Encoding& encoding) {
    const std::string message = "holds a NUL byte, so it is no text in " + std::string(encoding.name());
    if (const auto guess = GuessUtf16(bytes)) {
        return message + "; it looks like UTF-16 without a byte order mark: pass --code-page " + *guess;
    }
    return message + "; if it is UTF-16 without a byte order mark, pass --code-page utf-16le";
}

// Whether every byte from 0x80 on is part of UTF-8, and there is any; else where the first one is that is
// not.
struct Utf8Check {
    bool any = false;
    std::optional<std::size_t> invalidAt;
};

Utf8Check CheckUtf8(std::string_view bytes) {
    constexpr std::size_t block = 64;
    Utf8Check check;
    std::size_t at = 0;
    while (at < bytes.size()) {
        if (at + block <= bytes.size()) {
            unsigned char all = 0;
            for (std::size_t i = 0; i < block; ++i) {
                all |= static_cast<unsigned char>(bytes[at + i]);
            }
            if (all < 0x80) {
                at += block;
                continue;
            }
        }
        const std::size_t end = std::min(at + block, bytes.size());
        while (at < end) {
            const std::size_t length = Utf8SequenceLength(bytes.substr(at));
            if (length == 0) {
                check.any = true;
                check.invalidAt = at;
                return check;
            }
            check.any |= length > 1;
            at += length;
        }
    }
    return check;
}

}  // namespace

std::expected<TextFile, Diagnostic> RecogniseText(const std::filesystem::path& path, std::string_view bytes,
                                                  const EncodingPtr& codePage) {
    if (bytes.starts_with(std::string_view("\xFF\xFE\0\0", 4)) ||
        bytes.starts_with(std::string_view("\0\0\xFE\xFF", 4))) {
        return std::unexpected(Diagnostic{path, 0, "is UTF-32, which is not supported; convert it to UTF-8"});
    }
    TextFile file{codePage, 0};
    if (const auto mark = DetectByteOrderMark(bytes)) {
        file = {mark->encoding, mark->length};
    }
    if (file.encoding->unitSize() == 2) {
        if (bytes.size() % 2 != 0) {
            return std::unexpected(Diagnostic{path, 0,
                                              "has an odd number of bytes, so it is no text in " +
                                                  std::string(file.encoding->name()) +
                                                  "; it may have been cut off"});
        }
        return file;
    }
    const std::size_t nul = bytes.find('\0', file.begin);
    if (nul != std::string_view::npos) {
        return std::unexpected(
            Diagnostic{path, FileLineAt(bytes, nul, file), NulMessage(bytes, *file.encoding)});
    }
    return file;
}

std::int64_t FileLineAt(std::string_view bytes, std::size_t offset, const TextFile& file) {
    std::int64_t line = 1;
    for (std::size_t at = file.begin; at < bytes.size(); ++line) {
        const RawLine raw = NextRawLine(bytes, at, *file.encoding);
        if (offset < raw.next) {
            break;
        }
        at = raw.next;
    }
    return line;
}

std::optional<Diagnostic> DoubtAboutEncoding(const std::filesystem::path& path, std::string_view bytes,
                                             const TextFile& file) {
    if (file.encoding->unitSize() == 2) {
        return std::nullopt;
    }
    const Utf8Check check = CheckUtf8(bytes.substr(file.begin));
    const bool isUtf8 = file.encoding->name() == "UTF-8";
    if (isUtf8 && check.invalidAt) {
        return Diagnostic{path, FileLineAt(bytes, file.begin + *check.invalidAt, file),
                          "holds bytes that are no UTF-8; they are kept as they are"};
    }
    if (!isUtf8 && check.any && !check.invalidAt) {
        return Diagnostic{path, 0,
                          "is read as " + std::string(file.encoding->name()) +
                              " but looks like UTF-8; if it is, pass --code-page 65001"};
    }
    return std::nullopt;
}

}  // namespace lintara::workspace
