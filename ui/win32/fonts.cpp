#include "ui/win32/fonts.h"

#include "platform/wide_text.h"

#include <algorithm>
#include <cmath>

namespace lintara::ui::win32 {
namespace {

bool IsForCode(const forms::Font& font) {
    return font.name.find(u"Courier") != Text::npos || font.name.find(u"Mono") != Text::npos;
}

UniqueFont MakeFont(const forms::Font& font, int dpi) {
    constexpr double pointsPerInch = 72;
    LOGFONTW wanted{};
    wanted.lfHeight = static_cast<LONG>(-std::lround(font.points * dpi / pointsPerInch));
    wanted.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
    wanted.lfCharSet = DEFAULT_CHARSET;
    wanted.lfQuality = DEFAULT_QUALITY;
    wanted.lfPitchAndFamily =
        static_cast<BYTE>(IsForCode(font) ? FIXED_PITCH | FF_MODERN : VARIABLE_PITCH | FF_SWISS);
    const std::wstring name = platform::ToWide(font.name).substr(0, LF_FACESIZE - 1);
    std::ranges::copy(name, wanted.lfFaceName);
    return UniqueFont(::CreateFontIndirectW(&wanted));
}

}  // namespace

HFONT FontSet::Get(const forms::Font& font) {
    const auto found = std::ranges::find(fonts_, font, &decltype(fonts_)::value_type::first);
    if (found != fonts_.end()) {
        return found->second.get();
    }
    return fonts_.emplace_back(font, MakeFont(font, dpi_)).second.get();
}

SIZE MeasureLine(HFONT font, const std::wstring& text) {
    const WindowDc dc(nullptr);
    const Selected selected(dc.get(), font);
    SIZE size{};
    ::GetTextExtentPoint32W(dc.get(), text.data(), static_cast<int>(text.size()), &size);
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc.get(), &metrics);
    size.cy = metrics.tmHeight;
    return size;
}

}  // namespace lintara::ui::win32
