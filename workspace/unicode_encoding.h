// The encodings of Unicode itself: UTF-8 and UTF-16 in both byte orders.
#pragma once

#include "workspace/encoding.h"

namespace lintara::workspace {

// Bytes that are no UTF-8 become lone low surrogates and back; see encoding.h.
class Utf8Encoding final : public Encoding {
  public:
    [[nodiscard]] std::string_view name() const override { return "UTF-8"; }
    [[nodiscard]] std::size_t unitSize() const override { return 1; }
    void Decode(std::string_view bytes, Text& text) const override;
    [[nodiscard]] bool Encode(TextView text, std::string& bytes) const override;
    [[nodiscard]] std::optional<std::size_t> FirstUnencodable(TextView text) const override;

  private:
    [[nodiscard]] Text Decoded(std::string_view bytes) const;
};

// Every code unit as it is, unpaired surrogates too. A last odd byte is not text: there must be none.
class Utf16Encoding final : public Encoding {
  public:
    explicit Utf16Encoding(bool isBigEndian) : isBigEndian_(isBigEndian) {}

    [[nodiscard]] std::string_view name() const override { return isBigEndian_ ? "UTF-16BE" : "UTF-16LE"; }
    [[nodiscard]] std::size_t unitSize() const override { return 2; }
    [[nodiscard]] bool bigEndian() const override { return isBigEndian_; }
    void Decode(std::string_view bytes, Text& text) const override;
    [[nodiscard]] bool Encode(TextView text, std::string& bytes) const override;
    [[nodiscard]] std::optional<std::size_t> FirstUnencodable(TextView text) const override;

  private:
    bool isBigEndian_;
};

}  // namespace lintara::workspace
