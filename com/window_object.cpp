#include "com/window_object.h"

#include "com/table_object.h"

#include <array>

namespace lintara::com {

using assistant::Direction;
using assistant::DispatchMember;
using assistant::Parameter;
using assistant::ValueType;
using enum assistant::Access;

namespace {

constexpr std::array Value = {Parameter{u"value", ValueType::Long}};
constexpr std::array Place = {Parameter{u"Left", ValueType::Long}, Parameter{u"Top", ValueType::Long},
                              Parameter{u"Width", ValueType::Long}, Parameter{u"Height", ValueType::Long}};

constexpr std::array Members = {
    DispatchMember{1, u"Name", Get, {}, ValueType::Text},
    DispatchMember{2, u"Left", Get, {}, ValueType::Long},
    DispatchMember{3, u"Left", Put, Value, {}},
    DispatchMember{4, u"Top", Get, {}, ValueType::Long},
    DispatchMember{5, u"Top", Put, Value, {}},
    DispatchMember{6, u"Width", Get, {}, ValueType::Long},
    DispatchMember{7, u"Width", Put, Value, {}},
    DispatchMember{8, u"Height", Get, {}, ValueType::Long},
    DispatchMember{9, u"Height", Put, Value, {}},
    DispatchMember{10, u"Move", Method, Place, {}},
};

}  // namespace

class WindowObject final : public TableObject<IDispatch> {
  public:
    WindowObject(const hostmodel::PlacedWindow& window, hostmodel::PlacedWindow* movable)
        : TableObject(Members), window_(&window), movable_(movable) {}

    void TakeBack() {
        window_ = nullptr;
        movable_ = nullptr;
    }

  private:
    [[nodiscard]] REFIID DescribedInterface() const noexcept override { return IID_NULL; }

    void Perform(int number, CallArguments& arguments, Variant& result) override {
        if (window_ == nullptr) {
            return;
        }
        switch (number) {
            case 1:
                result = Variant(TextView(window_->Name()));
                break;
            case 2:
                result = Variant(window_->Left());
                break;
            case 4:
                result = Variant(window_->Top());
                break;
            case 6:
                result = Variant(window_->Width());
                break;
            case 8:
                result = Variant(window_->Height());
                break;
            default:
                Move(number, arguments);
                break;
        }
    }

    void Move(int number, CallArguments& arguments) {
        if (movable_ == nullptr) {
            return;
        }
        std::array<std::int32_t, 4> place = {movable_->Left(), movable_->Top(), movable_->Width(),
                                             movable_->Height()};
        if (number == 10) {
            for (std::size_t i = 0; i < place.size(); ++i) {
                place[i] = arguments.number(i);
            }
        } else {
            place[static_cast<std::size_t>(number - 3) / 2] = arguments.number(0);
        }
        movable_->Move(place[0], place[1], place[2], place[3]);
    }

    const hostmodel::PlacedWindow* window_;
    hostmodel::PlacedWindow* movable_;
};

LentWindow::LentWindow(hostmodel::PlacedWindow& window)
    : object_(ComPtr<WindowObject>::Adopt(new WindowObject(window, &window))) {}

LentWindow::LentWindow(const hostmodel::PlacedWindow& window)
    : object_(ComPtr<WindowObject>::Adopt(new WindowObject(window, nullptr))) {}

LentWindow::~LentWindow() {
    object_->TakeBack();
}

IDispatch* LentWindow::object() const {
    return object_.get();
}

}  // namespace lintara::com
