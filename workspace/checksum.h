// A quick checksum that tells whether a file still holds certain bytes. No protection against intent.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace lintara::workspace {

// The same on every machine: the journal of a save may be read on another one.
[[nodiscard]] inline std::uint64_t Checksum(std::string_view bytes) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;
    const auto mix = [](std::uint64_t value) {
        value = (value ^ (value >> 32)) * factor;
        return value ^ (value >> 29);
    };
    const auto word = [&](std::size_t at) {
        std::uint64_t value = 0;
        std::memcpy(&value, bytes.data() + at, sizeof value);
        return std::endian::native == std::endian::big ? std::byteswap(value) : value;
    };
    // Two chains, so that one can go on while the other multiplies.
    std::uint64_t even = mix(bytes.size());
    std::uint64_t odd = factor;
    std::size_t at = 0;
    for (; at + 16 <= bytes.size(); at += 16) {
        even = mix(even ^ word(at));
        odd = mix(odd ^ word(at + 8));
    }
    for (; at < bytes.size(); ++at) {
        even = mix(even ^ static_cast<unsigned char>(bytes[at]));
    }
    return mix(even ^ mix(odd));
}

}  // namespace lintara::workspace
