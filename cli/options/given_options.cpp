#include "cli/options/given_options.h"

namespace lintara::cli {

void GivenOptions::Remove(std::string_view name) {
    if (const auto found = options_.find(name); found != options_.end()) {
        options_.erase(found);
    }
}

const GivenOption* GivenOptions::Find(std::string_view name) const {
    const auto found = options_.find(name);
    return found == options_.end() ? nullptr : &found->second;
}

bool GivenOptions::IsFrom(OptionOrigin origin, std::string_view name) const {
    const GivenOption* option = Find(name);
    return option != nullptr && option->origin == origin;
}

}  // namespace lintara::cli
