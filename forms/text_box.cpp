#include "forms/text_box.h"

#include "base/strings.h"
#include "forms/control_visitor.h"

#include <algorithm>
#include <utility>

namespace lintara::forms {

void TextBox::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void TextBox::SetContents(TextView text) {
    if (text != text_) {
        Take(Text(text), 0, 0);
    }
}

void TextBox::Select(std::int32_t start, std::int32_t length) {
    const std::int32_t end = Len(text_);
    const std::int32_t selStart = std::clamp(start, 0, end);
    const std::int32_t selLength = std::clamp(length, 0, end - selStart);
    if (selStart != selStart_ || selLength != selLength_) {
        selStart_ = selStart;
        selLength_ = selLength;
        Tell(Property::Selection);
    }
}

void TextBox::SelectAll() {
    Select(0, Len(text_));
}

Text TextBox::SelText() const {
    return text_.substr(static_cast<std::size_t>(selStart_), static_cast<std::size_t>(selLength_));
}

void TextBox::SetSelText(TextView replacement) {
    Text text = text_;
    text.replace(static_cast<std::size_t>(selStart_), static_cast<std::size_t>(selLength_), replacement);
    Take(std::move(text), selStart_ + Len(replacement), 0);
}

void TextBox::Edit(TextView text, std::int32_t selStart, std::int32_t selLength) {
    if (Usable()) {
        Take(Text(text), selStart, selLength);
    }
}

void TextBox::Type(TextView text) {
    if (Usable()) {
        SetSelText(text);
    }
}

void TextBox::Take(Text text, std::int32_t selStart, std::int32_t selLength) {
    const bool isNew = text != text_;
    if (isNew) {
        text_ = std::move(text);
        selStart_ = 0;
        selLength_ = 0;
        Tell(Property::Text);
    }
    Select(selStart, selLength);
    if (isNew) {
        Change.Raise();
    }
}

}  // namespace lintara::forms
