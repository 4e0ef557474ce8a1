// Copies of plain ASCII between bytes and UTF-16, the common case of every encoding here. It is done once for
// every line that is looked at, so it goes by blocks that fit a register of the processor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace lintara::workspace {

namespace detail {

constexpr std::size_t asciiBlock = 8;
using AsciiBytes = unsigned char __attribute__((vector_size(asciiBlock)));
using AsciiUnits = std::uint16_t __attribute__((vector_size(2 * asciiBlock)));

// Copies a block, or nothing where there is other than ASCII in it.
inline bool WidenBlock(const char* bytes, char16_t* text) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, asciiBlock);
    if ((word & 0x8080808080808080U) != 0) {
        return false;
    }
    AsciiBytes block;
    std::memcpy(&block, bytes, asciiBlock);
    const AsciiUnits units = __builtin_convertvector(block, AsciiUnits);
    std::memcpy(text, &units, sizeof units);
    return true;
}

inline bool NarrowBlock(const char16_t* text, char* bytes) {
    std::uint64_t words[2];
    std::memcpy(words, text, sizeof words);
    if (((words[0] | words[1]) & 0xFF80FF80FF80FF80U) != 0) {
        return false;
    }
    AsciiUnits units;
    std::memcpy(&units, text, sizeof units);
    const AsciiBytes block = __builtin_convertvector(units, AsciiBytes);
    std::memcpy(bytes, &block, asciiBlock);
    return true;
}

// Copies by `copyBlock(at)`, the rest by a last block that overlaps the one before, what is too short for a
// block by `copyOne(at)`. Both tell whether they found ASCII. The result is how much was copied.
template <class CopyBlock, class CopyOne>
inline std::size_t CopyAscii(std::size_t size, CopyBlock copyBlock, CopyOne copyOne) {
    std::size_t at = 0;
    if (size >= asciiBlock) {
        while (at + asciiBlock <= size && copyBlock(at)) {
            at += asciiBlock;
        }
        if (at + asciiBlock > size && copyBlock(size - asciiBlock)) {
            return size;
        }
    }
    while (at < size && copyOne(at)) {
        ++at;
    }
    return at;
}

}  // namespace detail

// Copies the ASCII that `bytes` begin with to `text`; the result is its length.
inline std::size_t WidenAscii(const char* bytes, std::size_t size, char16_t* text) {
    return detail::CopyAscii(
        size, [&](std::size_t at) { return detail::WidenBlock(bytes + at, text + at); },
        [&](std::size_t at) {
            text[at] = static_cast<unsigned char>(bytes[at]);
            return text[at] < 0x80;
        });
}

// The same the other way.
inline std::size_t NarrowAscii(const char16_t* text, std::size_t size, char* bytes) {
    return detail::CopyAscii(
        size, [&](std::size_t at) { return detail::NarrowBlock(text + at, bytes + at); },
        [&](std::size_t at) {
            bytes[at] = static_cast<char>(text[at]);
            return text[at] < 0x80;
        });
}

}  // namespace lintara::workspace
