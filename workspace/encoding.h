// How the bytes of a component file become UTF-16 and back. An encoding has no state that shows and may be
// used by several threads at once.
//
// Decoding loses nothing: what Decode makes of any bytes, Encode turns into those bytes again. A byte that
// the encoding leaves undefined becomes the C1 control of the same value (0x80 to 0x9F), or, where there is
// none or the encoding has that control for something else, the lone low surrogate 0xDC00 + byte, which no
// text holds otherwise. Encode is exact, too: a character that only resembles one of the encoding has no
// bytes, and a byte that is undefined by itself has none where its neighbours would make a character of it.
#pragma once

#include "base/text.h"
#include "base/utf8.h"

#include <cstddef>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lintara::workspace {

class Encoding {
  public:
    virtual ~Encoding() = default;

    // The name that people and the option --code-page use, "windows-1252" or "UTF-16LE".
    [[nodiscard]] virtual std::string_view name() const = 0;

    // The bytes of one code unit: 2 in UTF-16, else 1. A line break is made of whole code units.
    [[nodiscard]] virtual std::size_t unitSize() const = 0;

    // Of encodings with units of 2 bytes: whether the byte of higher value comes first.
    [[nodiscard]] virtual bool bigEndian() const { return false; }

    // Replaces `text` by what `bytes` stand for.
    virtual void Decode(std::string_view bytes, Text& text) const = 0;

    // Appends the bytes of `text`. When a character has none, `bytes` stays as it was and the result is
    // false.
    [[nodiscard]] virtual bool Encode(TextView text, std::string& bytes) const = 0;

    // The offset of the first character of `text`, in code units, that has no bytes in this encoding.
    [[nodiscard]] virtual std::optional<std::size_t> FirstUnencodable(TextView text) const = 0;
};

using EncodingPtr = std::shared_ptr<const Encoding>;

// UTF-16 in this machine's byte order, every code unit as it is: the encoding of components in memory.
[[nodiscard]] EncodingPtr MemoryEncoding();

// Windows-1252, the code page that files are in unless told otherwise.
[[nodiscard]] EncodingPtr DefaultEncoding();

// The encoding for `codePage`: a code page's number ("1252", "65001", "1200") or a name ("windows-1252",
// "utf-8", "shift_jis"), without regard to case. The error is a sentence for people.
[[nodiscard]] std::expected<EncodingPtr, std::string> FindEncoding(std::string_view codePage);

// The byte order mark that `bytes` begin with, if any: the encoding that it tells, and its length in bytes.
struct ByteOrderMark {
    EncodingPtr encoding;
    std::size_t length = 0;
};
[[nodiscard]] std::optional<ByteOrderMark> DetectByteOrderMark(std::string_view bytes);

// Whoever has to do with encodings needs these, too.
using lintara::FromUtf8;
using lintara::ToUtf8;

}  // namespace lintara::workspace
