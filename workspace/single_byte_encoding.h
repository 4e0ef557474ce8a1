// Code pages of one byte per character, by table.
#pragma once

#include "workspace/encoding.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace lintara::workspace {

// What each byte stands for; 0 for a byte from 0x80 on that the code page leaves undefined.
using CodePageTable = std::array<char16_t, 256>;

class SingleByteEncoding final : public Encoding {
  public:
    // The first half of `table` must be ASCII.
    SingleByteEncoding(std::string name, const CodePageTable& table);

    [[nodiscard]] std::string_view name() const override { return name_; }
    [[nodiscard]] std::size_t unitSize() const override { return 1; }
    void Decode(std::string_view bytes, Text& text) const override;
    [[nodiscard]] bool Encode(TextView text, std::string& bytes) const override;
    [[nodiscard]] std::optional<std::size_t> FirstUnencodable(TextView text) const override;

  private:
    void SetByte(char16_t character, std::size_t byte);
    // The byte of a character that is not ASCII; 0 when it has none.
    [[nodiscard]] std::uint8_t ByteOf(char16_t character) const {
        return pages_[pageOf_[character >> 8]][character & 0xFF];
    }

    std::string name_;
    CodePageTable table_;
    std::array<std::uint8_t, 256> pageOf_{};  // by the character's upper byte; page 0 is empty
    std::vector<std::array<std::uint8_t, 256>> pages_;
};

}  // namespace lintara::workspace
