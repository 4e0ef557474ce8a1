#include "controls/buffer_keys.h"

namespace lintara::controls {
namespace {

constexpr std::int16_t KeyC = 67;
constexpr std::int16_t KeyV = 86;

}  // namespace

void ExchangeWithBuffer(std::int16_t keyCode, std::int16_t shiftState, forms::TextBox& box, Text& buffer,
                        forms::Toolkit& toolkit) {
    if (shiftState != forms::shift::Shift + forms::shift::Ctrl) {
        return;
    }
    if (keyCode == KeyC) {
        buffer = box.SelText();
        toolkit.ShowMessage(u"The selected text was placed into the Tarnwick copy-and-paste buffer.",
                            forms::MessageStyle::Information, u"");
    } else if (keyCode == KeyV) {
        box.SetSelText(buffer);
    }
}

}  // namespace lintara::controls
