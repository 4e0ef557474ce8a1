// The fonts of forms, made once for each window and density.
#pragma once

#include "forms/font.h"
#include "ui/win32/handles.h"

#include <string>
#include <utility>
#include <vector>

namespace lintara::ui::win32 {

class FontSet {
  public:
    explicit FontSet(int dpi) : dpi_(dpi) {}

    [[nodiscard]] int dpi() const { return dpi_; }

    // The system takes a similar font where it has not the one that is asked for. Belongs to the set.
    [[nodiscard]] HFONT Get(const forms::Font& font);

  private:
    int dpi_;
    std::vector<std::pair<forms::Font, UniqueFont>> fonts_;
};

// The size of one line of text, in pixels. The height is that of the font's letters, also where there is no
// text.
[[nodiscard]] SIZE MeasureLine(HFONT font, const std::wstring& text);

}  // namespace lintara::ui::win32
