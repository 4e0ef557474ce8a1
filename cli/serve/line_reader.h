// Lines of a source, one at a time, each as soon as it is complete.
#pragma once

#include "cli/streams.h"

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>

namespace lintara::cli {

class LineReader {
  public:
    enum class Outcome : unsigned char { Line, TooLong, End };

    // Lines of more than `longest` bytes are passed over.
    LineReader(Source& in, std::size_t longest) : in_(in), longest_(longest) {}

    // Waits for the next line, which `line` gives until it is let go; the last one may lack its line feed.
    // TooLong comes as soon as a line is. The error is a sentence.
    [[nodiscard]] std::expected<Outcome, std::string> Next();
    [[nodiscard]] std::string_view line() const { return line_; }
    // Lets go of the line. The room that a rare long one took goes with it.
    void Release();

  private:
    [[nodiscard]] std::expected<bool, std::string> ReadMore();
    [[nodiscard]] std::expected<bool, std::string> SkipRest();

    Source& in_;
    std::size_t longest_;
    std::string buffer_;
    std::size_t begin_ = 0;    // of what was not given yet
    std::size_t scanned_ = 0;  // up to here there is no line feed behind `begin_`
    bool skipping_ = false;    // the rest of a line that is too long
    std::string_view line_;
};

}  // namespace lintara::cli
