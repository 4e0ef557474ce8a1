#include "forms/caption.h"

namespace lintara::forms {
namespace {

char16_t Upper(char16_t unit) {
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

}  // namespace

Caption ReadCaption(TextView marked) {
    Caption caption;
    for (std::size_t i = 0; i < marked.size(); ++i) {
        const bool isMark = marked[i] == u'&' && i + 1 < marked.size();
        if (isMark) {
            ++i;
            if (marked[i] != u'&' && !caption.accessKey) {
                caption.accessKey = caption.shown.size();
            }
        }
        caption.shown += marked[i];
    }
    return caption;
}

bool HasAccessKey(TextView marked, char16_t key) {
    const Caption caption = ReadCaption(marked);
    return caption.accessKey && Upper(caption.shown[*caption.accessKey]) == Upper(key);
}

}  // namespace lintara::forms
