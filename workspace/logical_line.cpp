#include "workspace/logical_line.h"

#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::workspace {

Line LogicalLineReader::Read(Line first) {
    first_ = first;
    continuations_.clear();
    lines_->Read(first, text_);
    Line next = first + 1;
    while (Continues(text_) && next <= lines_->last()) {
        text_.pop_back();
        continuations_.push_back(text_.size());
        lines_->Read(next, piece_);
        // A lone " _" continues by itself, not by a blank of the line before it.
        const bool continues = Continues(piece_);
        text_ += piece_;
        ++next;
        if (!continues) {
            break;
        }
    }
    return next;
}

Line LogicalLineReader::LineOf(std::size_t offset) const {
    const auto after = std::ranges::upper_bound(continuations_, offset);
    return first_ + static_cast<std::int32_t>(after - continuations_.begin());
}

Line LogicalLineReader::StartOf(Line line) {
    while (line > Line{1}) {
        lines_->Read(line - 1, piece_);
        if (!Continues(piece_)) {
            break;
        }
        --line;
    }
    return line;
}

Line LogicalLineReader::EndOf(Line line) {
    bool continues = true;
    while (continues && line <= lines_->last()) {
        lines_->Read(line, piece_);
        continues = Continues(piece_);
        ++line;
    }
    return line;
}

}  // namespace lintara::workspace
