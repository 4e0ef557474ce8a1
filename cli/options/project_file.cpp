#include "cli/options/project_file.h"

#include "cli/options/toml_values.h"
#include "cli/options/usage_error.h"
#include "cli/scope/near_names.h"
#include "workspace/encoding.h"
#include "workspace/read_file.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t largestFile = std::uintmax_t{1} << 20;

std::string BytesOf(const fs::path& path) {
    std::error_code error;
    if (const auto size = fs::file_size(path, error); !error && size > largestFile) {
        throw UsageError(path.string() + ": is larger than 1 MiB, too large for a project file");
    }
    auto content = workspace::ReadFile(path);
    if (!content) {
        throw std::runtime_error(path.string() + ": " + content.error());
    }
    return std::move(content->bytes);
}

const OptionInfo* OptionOfAny(std::span<const CommandInfo> commands, std::string_view name) {
    const OptionInfo* known = nullptr;
    for (const CommandInfo& command : commands) {
        const OptionInfo* option = command.Option(name);
        if (option != nullptr && (known == nullptr || option->inProjectFile)) {
            known = option;
        }
    }
    return known;
}

class Reader {
  public:
    Reader(fs::path path, std::span<const CommandInfo> commands) : commands_(commands) {
        file_.path = std::move(path);
    }

    ProjectFile Read(const toml::table& top) {
        for (const auto& [key, node] : top) {
            const std::string name(key.str());
            const toml::table* table = node.as_table();
            RequireSingleTable(name, key, node);
            // Some options bear the name of a command, such as "template".
            const OptionInfo* option = OptionOfAny(commands_, name);
            const bool isCommand = IsCommandOrFamily(name);
            if (table != nullptr && (isCommand || option == nullptr)) {
                ReadTable(name, *table);
            } else if (isCommand && (option == nullptr || !option->inProjectFile)) {
                std::string what = "'" + name;
                what += "' is a command; write its options below [" + name + "]";
                Fail(key.source().begin.line, what);
            } else {
                AddOption(file_.shared, commands_, key, node);
            }
        }
        return std::move(file_);
    }

  private:
    [[noreturn]] void Fail(std::size_t line, const std::string& what) const {
        throw UsageError(file_.path.string() + ":" + std::to_string(line) + ": " + what);
    }

    [[nodiscard]] bool IsFamily(std::string_view name) const {
        return std::ranges::any_of(commands_, [&](const CommandInfo& command) {
            return command.name.starts_with(std::string(name) + " ");
        });
    }

    [[nodiscard]] bool IsCommandOrFamily(std::string_view name) const {
        return IsFamily(name) || std::ranges::find(commands_, name, &CommandInfo::name) != commands_.end();
    }

    // Two brackets begin one of several tables; there is one for each command.
    void RequireSingleTable(const std::string& name, const toml::key& key, const toml::node& node) const {
        if (node.is_array_of_tables()) {
            Fail(key.source().begin.line, "[[" + Dotted(name) + "]] begins a list of tables; write [" +
                                              Dotted(name) + "], and that once");
        }
    }

    // `name` is the command's, or its family's.
    void ReadTable(const std::string& name, const toml::table& table) {
        const auto command = std::ranges::find(commands_, name, &CommandInfo::name);
        if (command != commands_.end()) {
            GivenOptions& options = file_.ofCommands[name];
            for (const auto& [key, node] : table) {
                AddOption(options, {command, 1}, key, node);
            }
            return;
        }
        if (!IsFamily(name)) {
            Fail(table.source().begin.line,
                 "there is no command '" + name + "'." + Near(name, CommandNames()));
        }
        for (const auto& [key, node] : table) {
            const toml::table* inner = node.as_table();
            const std::string full = name + " " + std::string(key.str());
            RequireSingleTable(full, key, node);
            if (inner == nullptr || !IsCommandOrFamily(full)) {
                Fail(key.source().begin.line, "below [" + name +
                                                  "] there are only tables of commands, such as [" +
                                                  Dotted(FirstOfFamily(name)) + "]");
            }
            ReadTable(full, *inner);
        }
    }

    // An option of any of `commands`.
    void AddOption(GivenOptions& options, std::span<const CommandInfo> commands, const toml::key& key,
                   const toml::node& node) const {
        const std::string name(key.str());
        const std::size_t line = key.source().begin.line;
        const OptionInfo* option = OptionOfAny(commands, name);
        if (option == nullptr) {
            Fail(line, NoSuchOption(commands, name));
        }
        if (!option->inProjectFile) {
            Fail(line, "'" + name + "' can be given on the command line only");
        }
        auto texts = TomlTexts(*option, node);
        if (!texts) {
            Fail(texts.error().line, texts.error().what);
        }
        if (option->isPath) {
            for (std::string& text : *texts) {
                text = (file_.path.parent_path() / text).string();
            }
        }
        options.Add(name, {.texts = *std::move(texts),
                           .origin = OptionOrigin::ProjectFile,
                           .place = file_.path.string() + ":" + std::to_string(line)});
    }

    [[nodiscard]] std::string NoSuchOption(std::span<const CommandInfo> commands,
                                           const std::string& name) const {
        std::vector<std::string_view> known;
        for (const CommandInfo& command : commands) {
            for (const OptionInfo& option : command.options) {
                if (option.inProjectFile && std::ranges::find(known, option.name) == known.end()) {
                    known.push_back(option.name);
                }
            }
        }
        if (commands.size() > 1) {
            return "there is no option '" + name + "'." + Near(name, known) +
                   " 'lintara config --no-config' shows them all";
        }
        const std::string command(commands.front().name);
        if (OptionOfAny(commands_, name) != nullptr) {
            return "the command '" + command + "' has no option '" + name + "'";
        }
        return "the command '" + command + "' has no option '" + name + "'." + Near(name, known);
    }

    [[nodiscard]] static std::string Near(std::string_view wanted, std::span<const std::string_view> names) {
        std::vector<Text> texts;
        std::ranges::transform(names, std::back_inserter(texts), workspace::FromUtf8);
        return Suggestion(workspace::FromUtf8(wanted), texts);
    }

    [[nodiscard]] std::vector<std::string_view> CommandNames() const {
        std::vector<std::string_view> names;
        std::ranges::transform(commands_, std::back_inserter(names), &CommandInfo::name);
        return names;
    }

    [[nodiscard]] std::string FirstOfFamily(const std::string& family) const {
        return std::string(std::ranges::find_if(commands_, [&](const CommandInfo& command) {
                               return command.name.starts_with(family + " ");
                           })->name);
    }

    [[nodiscard]] static std::string Dotted(std::string name) {
        std::ranges::replace(name, ' ', '.');
        return name;
    }

    std::span<const CommandInfo> commands_;
    ProjectFile file_;
};

}  // namespace

GivenOptions ProjectFile::For(const CommandInfo& command) const {
    GivenOptions given;
    const auto own = ofCommands.find(command.name);
    for (const OptionInfo& option : command.options) {
        const GivenOption* value = own == ofCommands.end() ? nullptr : own->second.Find(option.name);
        value = value == nullptr ? shared.Find(option.name) : value;
        if (value != nullptr && option.inProjectFile) {
            given.Add(option.name, *value);
        }
    }
    return given;
}

std::optional<fs::path> FindProjectFile(const fs::path& project) {
    std::error_code error;
    const fs::path whole = fs::absolute(project, error);
    fs::path folder = fs::canonical(fs::is_directory(whole, error) ? whole : whole.parent_path(), error);
    while (!folder.empty()) {
        if (fs::exists(fs::symlink_status(folder / projectFileName, error))) {
            return folder / projectFileName;
        }
        folder = folder == folder.root_path() ? fs::path() : folder.parent_path();
    }
    return std::nullopt;
}

ProjectFile ReadProjectFile(const fs::path& path, std::span<const CommandInfo> commands) {
    const fs::path whole = fs::absolute(path);
    const auto table = platform::ParseToml(BytesOf(whole));
    if (!table) {
        throw UsageError(whole.string() + ":" + std::to_string(table.error().line) +
                         ": this is no TOML that can be read: " + table.error().what);
    }
    return Reader(whole, commands).Read(*table);
}

}  // namespace lintara::cli
