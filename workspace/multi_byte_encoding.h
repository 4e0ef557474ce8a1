// Code pages of one to four bytes per character, by ICU's converters.
#pragma once

#include "workspace/encoding.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <unicode/ucnv.h>

namespace lintara::workspace {

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using ConverterPtr = std::unique_ptr<UConverter, CloseConverter>;

class MultiByteEncoding final : public Encoding {
  public:
    // `converter` is ICU's for a code page that extends ASCII.
    MultiByteEncoding(std::string name, ConverterPtr converter);

    [[nodiscard]] std::string_view name() const override { return name_; }
    [[nodiscard]] std::size_t unitSize() const override { return 1; }
    void Decode(std::string_view bytes, Text& text) const override;
    [[nodiscard]] bool Encode(TextView text, std::string& bytes) const override;
    [[nodiscard]] std::optional<std::size_t> FirstUnencodable(TextView text) const override;

  private:
    class Borrowed;

    // Appends the bytes of `text` from `at` on; what stands before it is ASCII, and its bytes end `bytes`.
    // The first character without bytes, if any; then `bytes` has those of the ones before it.
    [[nodiscard]] std::optional<std::size_t> EncodeFrom(std::size_t at, TextView text,
                                                        std::string& bytes) const;

    std::string name_;
    // A converter has state while it converts, so each call borrows one that nobody else uses.
    mutable std::mutex mutex_;
    mutable std::vector<ConverterPtr> idle_;
};

}  // namespace lintara::workspace
