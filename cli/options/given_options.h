// The options of one run by their names, each with where it was given. Several layers are laid over each
// other: the command line over the project file over the user's settings.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

enum class OptionOrigin { CommandLine, ProjectFile, UserSettings };

struct GivenOption {
    std::vector<std::string> texts;  // of a flag "true" or "false"
    OptionOrigin origin = OptionOrigin::CommandLine;
    std::string place = {};  // "/home/ada/shop/.lintara.toml:3", or the name of a setting
};

class GivenOptions {
  public:
    // What was given before under that name stays.
    void Add(std::string_view name, GivenOption option) {
        options_.try_emplace(std::string(name), std::move(option));
    }
    // Adds what `lower` has and this has not.
    void AddMissing(const GivenOptions& lower) {
        options_.insert(lower.options_.begin(), lower.options_.end());
    }
    void Remove(std::string_view name);

    // Null when it was not given.
    [[nodiscard]] const GivenOption* Find(std::string_view name) const;
    [[nodiscard]] bool Has(std::string_view name) const { return Find(name) != nullptr; }
    [[nodiscard]] bool IsFrom(OptionOrigin origin, std::string_view name) const;

  private:
    std::map<std::string, GivenOption, std::less<>> options_;
};

}  // namespace lintara::cli
