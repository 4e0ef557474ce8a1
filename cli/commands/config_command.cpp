// lintara config: the options that hold for a project, and where each comes from.
#include "base/settings_table.h"
#include "base/utf8.h"
#include "cli/commands/commands.h"
#include "cli/environment.h"
#include "cli/help_text.h"
#include "cli/options/layers.h"
#include "cli/options/shared_options.h"
#include "cli/output/json_text.h"
#include "cli/output/terminal_text.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace lintara::cli {
namespace {

constexpr std::string_view ConfigFooter =
    "\nExamples:\n"
    "  lintara config Invoicing.vbp --print\n"
    "      Each option that a project file may give, its value, and where that comes from.\n"
    "  lintara config Invoicing.vbp --base 20000 --json\n"
    "      The same for programs, as it is when a command is given --base 20000.\n"
    "\nThe project file:\n"
    "  .lintara.toml beside the project, or in the nearest folder above it, gives options to every\n"
    "  command that reads the project:\n"
    "\n"
    "    line-numbers = true\n"
    "    base = 20000\n"
    "    template = \"handler.txt\"      # beside this file\n"
    "    exclude = [\"modGenerated\", \"*.Class_Initialize\"]\n"
    "\n"
    "    [insert]                      # for 'lintara insert' alone\n"
    "    step = 10\n"
    "\n"
    "  An option on the command line wins over the file; so does its whole list, where it takes\n"
    "  several values. What neither gives comes from the user's settings ('lintara settings list'),\n"
    "  else from the program.\n"
    "\nExit status:\n"
    "  0  done\n"
    "  2  wrong usage, or something wrong in the project file\n"
    "  3  the project or the project file could not be read\n";

constexpr std::string_view Heading = "Options that a project file may give";

constexpr std::size_t widestValue = 40;

struct Row {
    const OptionInfo* option;
    const GivenOption* given;  // null: the default
};

std::vector<std::string> ValuesOf(const Row& row) {
    if (row.given != nullptr) {
        return row.given->texts;
    }
    if (const SettingInfo* setting = FindSetting(row.option->setting)) {
        return {ToUtf8(setting->absent)};
    }
    switch (row.option->kind) {
        case OptionKind::Flag:
            return {"false"};
        case OptionKind::Text:
            return {std::string(row.option->absent)};
        case OptionKind::Texts:
            return {};
    }
    return {};
}

std::string_view OriginOf(const Row& row) {
    if (row.given == nullptr) {
        return "default";
    }
    switch (row.given->origin) {
        case OptionOrigin::CommandLine:
            return "command line";
        case OptionOrigin::ProjectFile:
            return "project file";
        case OptionOrigin::UserSettings:
            return "user settings";
    }
    return "";
}

// "command line", "/home/ada/shop/.lintara.toml:3", "user settings (LNBase)"
std::string FromText(const Row& row) {
    if (row.given != nullptr && row.given->origin == OptionOrigin::ProjectFile) {
        return row.given->place;
    }
    const std::string origin(OriginOf(row));
    return row.given == nullptr || row.given->place.empty() ? origin : origin + " (" + row.given->place + ")";
}

// The beginning of the first line that says something, and how many lines there are.
std::string Abbreviated(const std::string& text) {
    if (!text.contains('\n')) {
        return Printable(std::string_view(text));
    }
    constexpr std::size_t shown = 24;
    const auto breaks = static_cast<std::size_t>(std::ranges::count(text, '\n'));
    const std::size_t lines = text.ends_with('\n') ? breaks : breaks + 1;
    const Text whole = FromUtf8(text);
    const std::size_t begin = std::min(whole.find_first_not_of(u" \t\r\n"), whole.size());
    const TextView line = TextView(whole).substr(begin, whole.find_first_of(u"\r\n", begin) - begin);
    const std::string start = Printable(line.substr(0, shown));
    return start + "... (" + std::to_string(lines) + (lines == 1 ? " line)" : " lines)");
}

std::string ValueText(const Row& row) {
    std::string text;
    for (const std::string& value : ValuesOf(row)) {
        if (!text.empty()) {
            text += ", ";
        }
        text += Abbreviated(value);
    }
    return text.empty() ? "-" : text;
}

std::string Padded(std::string text, std::size_t width) {
    const std::size_t columns = ColumnsOf(text);
    return columns < width ? text + std::string(width - columns, ' ') : text;
}

std::vector<Row> RowsOf(const CommandInfo& command, const GivenOptions& given) {
    std::vector<Row> rows;
    for (const OptionInfo& option : command.options) {
        if (option.inProjectFile) {
            rows.push_back({&option, given.Find(option.name)});
        }
    }
    return rows;
}

// What the file gives to that command alone, unless the command line says otherwise.
std::vector<Row> OwnRows(const OptionReader& given, const GivenOptions& ofCommand) {
    std::vector<Row> rows;
    for (const OptionInfo& option : given.command().options) {
        const GivenOption* own = ofCommand.Find(option.name);
        if (own != nullptr && !given.IsOnCommandLine(option.name)) {
            rows.push_back({&option, own});
        }
    }
    return rows;
}

std::string Table(const std::vector<Row>& rows) {
    std::vector<std::array<std::string, 3>> cells = {{"option", "value", "from"}};
    for (const Row& row : rows) {
        cells.push_back(
            {std::string(row.option->name), ValueText(row), Printable(std::string_view(FromText(row)))});
    }
    std::array<std::size_t, 2> widths{};
    for (const auto& line : cells) {
        widths[0] = std::max(widths[0], ColumnsOf(line[0]));
        widths[1] = std::max(widths[1], std::min(ColumnsOf(line[1]), widestValue));
    }
    std::string table;
    for (const auto& line : cells) {
        table += Padded(line[0], widths[0]) + "  " + Padded(line[1], widths[1]) + "  " + line[2] + "\n";
    }
    return table;
}

Json JsonValue(const Row& row) {
    std::vector<std::string> values = ValuesOf(row);
    switch (row.option->kind) {
        case OptionKind::Flag:
            return values.back() == "true";
        case OptionKind::Text:
            return row.given == nullptr && values.front().empty() ? Json() : Json(values.front());
        case OptionKind::Texts:
            return values;
    }
    return {};
}

Json JsonRows(const std::vector<Row>& rows) {
    Json objects = Json::array();
    for (const Row& row : rows) {
        Json object = {{"name", row.option->name}, {"value", JsonValue(row)}, {"origin", OriginOf(row)}};
        if (row.given != nullptr && !row.given->place.empty()) {
            object["place"] = row.given->place;
        }
        objects.push_back(std::move(object));
    }
    return objects;
}

std::string AsJson(const OptionReader& given, const std::optional<ProjectFile>& file) {
    Json commands = Json::object();
    if (file) {
        for (const auto& [command, options] : file->ofCommands) {
            commands[command] = JsonRows(OwnRows(given, options));
        }
    }
    return Dump({{"projectFile", file ? Json(JsonPath(file->path)) : Json()},
                 {"options", JsonRows(RowsOf(given.command(), given.given()))},
                 {"commands", std::move(commands)}});
}

std::string AsTable(const OptionReader& given, const std::optional<ProjectFile>& file) {
    std::string text = "project file: " + (file ? PrintablePath(file->path) : "none") + "\n\n" +
                       Table(RowsOf(given.command(), given.given()));
    if (file) {
        for (const auto& [command, options] : file->ofCommands) {
            const std::vector<Row> rows = OwnRows(given, options);
            text += rows.empty() ? "" : "\nfor 'lintara " + command + "' alone:\n" + Table(rows);
        }
    }
    return text;
}

ExitStatus Run(const OptionReader& given, Environment& environment) {
    const std::filesystem::path path = ReadReading(given).path;
    std::error_code error;
    if (!path.empty() && !std::filesystem::exists(path, error)) {
        throw std::runtime_error(path.string() + ": there is no such file or folder");
    }
    const std::optional<ProjectFile> file = ProjectFileOf(given);
    environment.streams.out.Write(given.Flag("json") ? AsJson(given, file) : AsTable(given, file));
    return ExitStatus::Done;
}

// Every option that a project file may give to any command, once.
std::vector<OptionInfo> AllOf(std::span<const CommandInfo> commands) {
    std::vector<OptionInfo> all;
    for (const CommandInfo& command : commands) {
        for (OptionInfo option : command.options) {
            if (option.inProjectFile && std::ranges::find(all, option.name, &OptionInfo::name) == all.end()) {
                option.group = Heading;
                option.required = false;
                all.push_back(option);
            }
        }
    }
    return all;
}

}  // namespace

CommandInfo ConfigCommand(std::span<const CommandInfo> others) {
    const OptionInfo print{.name = "print", .description = "Print the options as a table; done anyway"};
    return {.name = "config",
            .description = "Show the options that hold for a project, and where they come from",
            .footer = ConfigFooter,
            .arguments = {{.name = "PATH",
                           .description = "Project, group, folder or component; default: the current folder",
                           .required = false}},
            .options = Joined({{print, JsonOption()}, AllOf(others), ProjectFileOptions()}),
            .run = Run};
}

}  // namespace lintara::cli
