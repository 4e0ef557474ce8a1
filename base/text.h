// The text type of the whole system. The IDE, the editors' protocols and the windowing toolkits count
// characters in UTF-16 code units; so do we. Conversion to and from bytes happens at the edges only.
#pragma once

#include <string>
#include <string_view>

namespace lintara {

using Text = std::u16string;
using TextView = std::u16string_view;

}  // namespace lintara
