#include "forms/up_down.h"

#include "base/numbers.h"
#include "base/statement.h"
#include "forms/control_visitor.h"

#include <algorithm>

namespace lintara::forms {

UpDown::UpDown(Container& container, TextView name, const Rect& place, TextBox& buddy, const Range& range)
    : Control(container, name, place), buddy_(buddy), range_(range), value_(range.min) {
    Assign(value_, CLng(buddy.Contents()));
    value_ = std::clamp(value_, range.min, range.max);
}

void UpDown::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

Result<void> UpDown::SetValue(std::int32_t value) {
    if (value < range_.min || value > range_.max) {
        return Failure(ErrorNumber::InvalidArgument, "the value lies outside the range of the arrows");
    }
    const bool isNew = value != value_;
    value_ = value;
    buddy_.SetContents(CStr(value));
    if (isNew) {
        Tell(Property::Value);
        Change.Raise();
    }
    return {};
}

void UpDown::Step(std::int32_t by) {
    if (!Usable()) {
        return;
    }
    std::int32_t from = value_;
    Assign(from, CLng(buddy_.Contents()));
    const std::int64_t to = std::int64_t{from} + by;
    Attempt(SetValue(static_cast<std::int32_t>(std::clamp<std::int64_t>(to, range_.min, range_.max))));
}

}  // namespace lintara::forms
