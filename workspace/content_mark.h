// By what the content of a file is known again when its bytes are not kept.
#pragma once

#include "workspace/checksum.h"

#include <cstdint>
#include <string_view>

namespace lintara::workspace {

struct ContentMark {
    std::uint64_t size = 0;
    std::uint64_t checksum = 0;

    friend bool operator==(const ContentMark&, const ContentMark&) = default;
};

[[nodiscard]] inline ContentMark MarkOf(std::string_view bytes) {
    return {bytes.size(), Checksum(bytes)};
}

}  // namespace lintara::workspace
