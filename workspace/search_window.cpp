#include "workspace/search_window.h"

#include "workspace/characters.h"

#include <algorithm>

namespace lintara::workspace {

namespace {

constexpr TextView lineBreak = u"\r\n";

// A window of several lines has so many of its own, so that those behind them are not read for each one.
constexpr std::int32_t fewestOfSeveral = 16;

}  // namespace

SearchWindow::SearchWindow(std::int32_t linesBehind, bool fold)
    : linesBehind_(linesBehind),
      ownLines_(linesBehind == 0 ? 1 : std::max(linesBehind, fewestOfSeveral)),
      fold_(fold) {}

void SearchWindow::MoveTo(const LineBuffer& lines, Line line) {
    first_ = line;
    begins_.assign(1, 0);
    lines.Read(line, text_);
    const auto behind =
        std::min<std::int64_t>(std::int64_t{ownLines_} - 1 + linesBehind_, lines.last() - line);
    for (std::int32_t i = 1; i <= behind; ++i) {
        text_ += lineBreak;
        begins_.push_back(text_.size());
        lines.Read(line + i, piece_);
        text_ += piece_;
    }
    const auto own = static_cast<std::size_t>(ownLines_);
    ownSize_ = begins_.size() > own ? begins_[own] : text_.size();
    FoldText();
}

void SearchWindow::Hold(TextView text, Line line) {
    first_ = line;
    begins_.assign(1, 0);
    text_ = text;
    ownSize_ = text_.size();
    FoldText();
}

void SearchWindow::FoldText() {
    if (fold_) {
        std::ranges::transform(text_, text_.begin(), Fold);
    }
}

Position SearchWindow::PositionOf(std::size_t offset) const {
    const std::size_t number = LineNumber(offset);
    return {first_ + static_cast<std::int32_t>(number),
            Column{static_cast<std::int32_t>(offset - begins_[number]) + 1}};
}

std::size_t SearchWindow::OffsetOf(Column column) const {
    const std::size_t next = begins_.size() > 1 ? begins_[1] : text_.size();
    return std::min(static_cast<std::size_t>(column.value() - 1), next);
}

std::size_t SearchWindow::EndOfLine(std::size_t offset) const {
    const std::size_t next = LineNumber(offset) + 1;
    return next == begins_.size() ? text_.size() : std::max(begins_[next] - lineBreak.size(), offset);
}

std::size_t SearchWindow::LineNumber(std::size_t offset) const {
    const auto after = std::ranges::upper_bound(begins_, offset);
    return static_cast<std::size_t>(after - begins_.begin()) - 1;
}

}  // namespace lintara::workspace
