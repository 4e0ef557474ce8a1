// The directives of conditional compilation: #If, #ElseIf, #Else, #End If and #Const.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace lintara::cli {

enum class Directive { None, If, ElseIf, Else, EndIf, Const };

// What the logical line, or its first physical line, is. A date literal ("#1/2/2003# ...") is None.
[[nodiscard]] Directive DirectiveOf(TextView line);

// "#End If"
[[nodiscard]] std::string_view NameOf(Directive directive);

struct UnbalancedDirective {
    std::size_t line = 0;  // its index
    Directive directive = Directive::None;
};

// Follows, line by line, which directives belong together.
class DirectiveBalance {
  public:
    // A line number or a label in front of the directive does not count.
    void Pass(std::size_t index, TextView line);
    // Once all lines were passed: the first directive whose #If is none of the lines, or else the first #If
    // whose #End If is none of them.
    [[nodiscard]] std::optional<UnbalancedDirective> unbalanced() const;

  private:
    std::optional<UnbalancedDirective> stray_;
    std::vector<std::size_t> open_;
};

// The same for lines that begin and end with whole logical lines.
[[nodiscard]] std::optional<UnbalancedDirective> FindUnbalancedDirective(std::span<const Text> lines);

}  // namespace lintara::cli
