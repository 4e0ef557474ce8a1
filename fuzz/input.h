// What the fuzz targets draw from the bytes that they are given.
#pragma once

#include "base/text.h"
#include "base/utf8.h"

#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>

namespace lintara::fuzz {

class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : provider_(data, size) {}

    [[nodiscard]] bool empty() { return provider_.remaining_bytes() == 0; }

    template <class Number>
    [[nodiscard]] Number Between(Number least, Number most) {
        return provider_.ConsumeIntegralInRange(least, most);
    }
    [[nodiscard]] bool Flag() { return provider_.ConsumeBool(); }

    template <class Choices>
    [[nodiscard]] const auto& Pick(const Choices& choices) {
        return choices[Between<std::size_t>(0, std::size(choices) - 1)];
    }

    [[nodiscard]] Text ShortText(std::size_t longest) {
        return FromUtf8(provider_.ConsumeRandomLengthString(longest));
    }

    [[nodiscard]] std::string Bytes(std::size_t longest) {
        return provider_.ConsumeRandomLengthString(longest);
    }

    [[nodiscard]] std::string Rest() { return provider_.ConsumeRemainingBytesAsString(); }
    [[nodiscard]] Text RestAsText() { return FromUtf8(Rest()); }

  private:
    FuzzedDataProvider provider_;
};

}  // namespace lintara::fuzz
