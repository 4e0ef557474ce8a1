#include "ui/qt/caption_text.h"

#include "forms/caption.h"
#include "ui/qt/text_conversion.h"

namespace lintara::ui {

QString MarkedCaption(TextView caption) {
    const forms::Caption read = forms::ReadCaption(caption);
    QString marked;
    for (std::size_t i = 0; i < read.shown.size(); ++i) {
        const QChar unit = read.shown[i];
        if (read.accessKey == i || unit == u'&') {
            marked += u'&';
        }
        marked += unit;
    }
    return marked;
}

QString PlainCaption(TextView caption) {
    return ToQString(forms::ReadCaption(caption).shown);
}

}  // namespace lintara::ui
