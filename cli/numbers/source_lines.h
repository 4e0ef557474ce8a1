// The physical lines of a component's file as it was read, whatever was done to the module since.
#pragma once

#include "base/text.h"
#include "workspace/module.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace lintara::cli {

class SourceLines {
  public:
    // The module must outlive this.
    explicit SourceLines(const workspace::Module& module);

    // The text of the file's line, which counts from 1; "" when there is none.
    [[nodiscard]] Text TextOf(std::int64_t fileLine) const;
    // Of the lines from `first` to `last`, both included, without regard to their line endings.
    [[nodiscard]] std::uint64_t ChecksumOf(std::int64_t first, std::int64_t last) const;

  private:
    [[nodiscard]] std::string_view BytesOf(std::int64_t fileLine) const;

    const workspace::Encoding& encoding_;
    std::vector<std::string_view> lines_;  // without their endings
};

}  // namespace lintara::cli
