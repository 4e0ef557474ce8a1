#include "ui/win32/caption_text.h"

#include "forms/caption.h"
#include "platform/wide_text.h"

namespace lintara::ui::win32 {

std::wstring MarkedCaption(TextView caption) {
    const forms::Caption read = forms::ReadCaption(caption);
    std::wstring marked;
    for (std::size_t i = 0; i < read.shown.size(); ++i) {
        if (read.accessKey == i || read.shown[i] == u'&') {
            marked += L'&';
        }
        marked += static_cast<wchar_t>(read.shown[i]);
    }
    return marked;
}

std::wstring PlainCaption(TextView caption) {
    return platform::ToWide(forms::ReadCaption(caption).shown);
}

}  // namespace lintara::ui::win32
