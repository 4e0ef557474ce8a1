#include "cli/options/command_info.h"

#include <algorithm>

namespace lintara::cli {

OptionInfo ValueOption(std::string_view name, std::string_view valueName, std::string_view description,
                       std::string_view group) {
    return {.name = name,
            .kind = OptionKind::Text,
            .valueName = valueName,
            .description = description,
            .group = group};
}

const OptionInfo* CommandInfo::Option(std::string_view optionName) const {
    const auto found = std::ranges::find(options, optionName, &OptionInfo::name);
    return found == options.end() ? nullptr : &*found;
}

}  // namespace lintara::cli
