// The copy-and-paste buffers, and which of them are kept in the code database.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "hostmodel/database.h"

#include <array>
#include <cstdint>

namespace lintara::assistant {

// The numbered buffers that are stored. The one after them lives in memory only.
inline constexpr std::int32_t StoredBufferCount = 10;
inline constexpr std::int32_t NumberedBufferCount = 11;

class CodeBuffers {
  public:
    [[nodiscard]] const Text& main() const { return main_; }
    void SetMain(TextView code) { main_ = code; }

    // An index outside 0 to 10 is a subscript error.
    [[nodiscard]] Result<Text> Numbered(std::int32_t index) const;
    [[nodiscard]] Result<void> SetNumbered(std::int32_t index, TextView code);

    // Takes over the stored buffers. Those without a row, and all when the engine fails, keep their values.
    void Load(hostmodel::Database& database);
    // Stores them, empty ones too. A row that the engine refuses is skipped; an engine that stores all rows
    // or none then stores none.
    void Save(hostmodel::Database& database) const;

  private:
    Text main_;
    std::array<Text, NumberedBufferCount> numbered_;
};

}  // namespace lintara::assistant
