#include "workspace/multi_byte_encoding.h"

#include "workspace/ascii_run.h"
#include "workspace/undefined_byte.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace lintara::workspace {

namespace {

// ICU's tables exchange these three controls in some code pages, as the first machines that had them did.
constexpr bool IsExchangedControl(unsigned value) {
    return value == 0x1A || value == 0x1C || value == 0x7F;
}

constexpr std::size_t longestSequence = 4;

// The bytes of a character, as many as `size` tells; none when the code page has none for it.
struct Sequence {
    std::array<char, 16> bytes{};
    std::size_t size = 0;

    [[nodiscard]] std::string_view view() const { return {bytes.data(), size}; }
};

Sequence EncodeCharacter(UConverter* converter, TextView character) {
    Sequence sequence;
    UErrorCode error = U_ZERO_ERROR;
    const int32_t size =
        ucnv_fromUChars(converter, sequence.bytes.data(), static_cast<int32_t>(sequence.bytes.size()),
                        character.data(), static_cast<int32_t>(character.size()), &error);
    sequence.size = U_SUCCESS(error) ? static_cast<std::size_t>(size) : 0;
    return sequence;
}

// The character that the first `size` bytes are; empty when they are none, or not the form in which the
// character is written back.
TextView DecodeCharacter(UConverter* converter, std::string_view bytes, std::array<char16_t, 8>& buffer) {
    UErrorCode error = U_ZERO_ERROR;
    const int32_t units = ucnv_toUChars(converter, buffer.data(), static_cast<int32_t>(buffer.size()),
                                        bytes.data(), static_cast<int32_t>(bytes.size()), &error);
    if (U_FAILURE(error) || units <= 0) {
        return {};
    }
    const TextView character(buffer.data(), static_cast<std::size_t>(units));
    return EncodeCharacter(converter, character).view() == bytes ? character : TextView();
}

// Appends the character at `at`, which is skipped.
void DecodeNext(UConverter* converter, std::string_view bytes, std::size_t& at, Text& text) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    if (byte < 0x80) {
        text += static_cast<char16_t>(byte);
        ++at;
        return;
    }
    std::array<char16_t, 8> buffer{};
    for (std::size_t size = 1; size <= longestSequence && at + size <= bytes.size(); ++size) {
        const TextView character = DecodeCharacter(converter, bytes.substr(at, size), buffer);
        if (!character.empty()) {
            text += character;
            at += size;
            return;
        }
    }
    const char16_t control = ControlOfByte(byte);
    const bool free = control != 0 && EncodeCharacter(converter, TextView(&control, 1)).size == 0;
    text += free ? control : EscapeOfByte(byte);
    ++at;
}

// Appends the bytes of the character at `at`, which is skipped; false when it has none.
bool EncodeNext(UConverter* converter, TextView text, std::size_t& at, std::string& bytes) {
    const char16_t unit = text[at];
    if (unit < 0x80) {
        bytes += static_cast<char>(unit);
        ++at;
        return true;
    }
    const bool pair = (unit & 0xFC00) == 0xD800 && at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
    const TextView character = text.substr(at, pair ? 2 : 1);
    const Sequence sequence = EncodeCharacter(converter, character);
    if (sequence.size > 0) {
        bytes += sequence.view();
    } else if (const auto escaped = ByteOfEscape(unit)) {
        bytes += *escaped;
    } else if (unit >= 0x80 && unit <= 0x9F) {
        bytes += static_cast<char>(unit);
    } else {
        return false;
    }
    at += character.size();
    return true;
}

// Decodes all of `bytes` at once. Fails when that would lose something; then it is done piece by piece.
bool DecodeWhole(UConverter* converter, std::string_view bytes, Text& text) {
    if (std::ranges::any_of(bytes,
                            [](char c) { return IsExchangedControl(static_cast<unsigned char>(c)); })) {
        return false;
    }
    text.resize(bytes.size() * 2);
    UErrorCode error = U_ZERO_ERROR;
    const int32_t units = ucnv_toUChars(converter, text.data(), static_cast<int32_t>(text.size()),
                                        bytes.data(), static_cast<int32_t>(bytes.size()), &error);
    if (U_FAILURE(error)) {
        return false;
    }
    text.resize(static_cast<std::size_t>(units));
    std::string again(bytes.size() + longestSequence, '\0');
    const int32_t size = ucnv_fromUChars(converter, again.data(), static_cast<int32_t>(again.size()),
                                         text.data(), static_cast<int32_t>(text.size()), &error);
    return U_SUCCESS(error) && std::string_view(again).substr(0, static_cast<std::size_t>(size)) == bytes;
}

}  // namespace

// A converter for the time of one call.
class MultiByteEncoding::Borrowed {
  public:
    explicit Borrowed(const MultiByteEncoding& owner) : owner_(owner) {
        const std::scoped_lock lock(owner_.mutex_);
        if (owner_.idle_.size() > 1) {
            converter_ = std::move(owner_.idle_.back());
            owner_.idle_.pop_back();
        } else {
            // The first converter stays: the others are its copies.
            UErrorCode error = U_ZERO_ERROR;
            converter_.reset(ucnv_clone(owner_.idle_.front().get(), &error));
            if (U_FAILURE(error) || converter_ == nullptr) {
                throw std::bad_alloc();
            }
        }
    }
    ~Borrowed() {
        const std::scoped_lock lock(owner_.mutex_);
        owner_.idle_.push_back(std::move(converter_));
    }
    Borrowed(const Borrowed&) = delete;
    Borrowed& operator=(const Borrowed&) = delete;

    [[nodiscard]] UConverter* get() const { return converter_.get(); }

  private:
    const MultiByteEncoding& owner_;
    ConverterPtr converter_;
};

MultiByteEncoding::MultiByteEncoding(std::string name, ConverterPtr converter) : name_(std::move(name)) {
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setFallback(converter.get(), 0);
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    idle_.push_back(std::move(converter));
}

void MultiByteEncoding::Decode(std::string_view bytes, Text& text) const {
    text.resize(bytes.size());
    if (WidenAscii(bytes.data(), bytes.size(), text.data()) == bytes.size()) {
        return;
    }
    const Borrowed converter(*this);
    if (DecodeWhole(converter.get(), bytes, text)) {
        return;
    }
    text.clear();
    for (std::size_t at = 0; at < bytes.size();) {
        DecodeNext(converter.get(), bytes, at, text);
    }
}

bool MultiByteEncoding::Encode(TextView text, std::string& bytes) const {
    const std::size_t before = bytes.size();
    bytes.resize(before + text.size());
    const std::size_t ascii = NarrowAscii(text.data(), text.size(), bytes.data() + before);
    bytes.resize(before + ascii);
    if (ascii == text.size()) {
        return true;
    }
    if (EncodeFrom(ascii, text, bytes)) {
        bytes.resize(before);
        return false;
    }
    return true;
}

std::optional<std::size_t> MultiByteEncoding::FirstUnencodable(TextView text) const {
    std::string ignored;
    return EncodeFrom(0, text, ignored);
}

std::optional<std::size_t> MultiByteEncoding::EncodeFrom(std::size_t at, TextView text,
                                                         std::string& bytes) const {
    const std::size_t before = bytes.size() - at;
    {
        const Borrowed converter(*this);
        while (at < text.size()) {
            const std::size_t start = at;
            if (!EncodeNext(converter.get(), text, at, bytes)) {
                return start;
            }
        }
    }
    Text again;
    Decode(std::string_view(bytes).substr(before), again);
    return FirstMisread(text, again);
}

}  // namespace lintara::workspace
