#include "cli/options/command_info.h"

#include <algorithm>

namespace lintara::cli {

const OptionInfo* CommandInfo::Option(std::string_view optionName) const {
    const auto found = std::ranges::find(options, optionName, &OptionInfo::name);
    return found == options.end() ? nullptr : &*found;
}

}  // namespace lintara::cli
