// lintara buffer: the numbered copy-and-paste buffers that the user's code database keeps.
#include "base/utf8.h"
#include "cli/buffers/buffer_source.h"
#include "cli/buffers/code_database.h"
#include "cli/commands/commands.h"
#include "cli/options/shared_options.h"
#include "cli/output/json_text.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/project/text_source.h"
#include "platform/jet_import.h"

#include <algorithm>
#include <stdexcept>

namespace lintara::cli {
namespace {

#define LINTARA_BUFFER_STATUSES \
    "\nExit status:\n"          \
    "  0  done\n"               \
    "  2  wrong usage\n"        \
    "  3  there is no code database, or it could not be read or written; nothing was stored\n"

#define LINTARA_CODE_DATABASE                                                                          \
    "\nThe code database:\n"                                                                           \
    "  The buffers 0 to 9 are kept in a file Assistants.mdb. Its folder is the user's setting\n"       \
    "  CodeDbPath; without one, the file is looked for beside the program. Where nothing leads to\n"   \
    "  one, lintara asks at a terminal, and remembers the answer. --database names the folder\n"       \
    "  instead; it is remembered when no other one is known, else it counts this once.\n"              \
    "  'lintara buffer init' makes a new one. A file that another program has locked is waited for,\n" \
    "  5 seconds at most.\n"

constexpr std::string_view ListFooter =
    "\nExample:\n"
    "  lintara buffer list\n"
    "      Each buffer with the number of its lines and the first of them.\n" LINTARA_CODE_DATABASE
        LINTARA_BUFFER_STATUSES;

constexpr std::string_view GetFooter =
    "\nExamples:\n"
    "  lintara buffer get 3 > trace.txt\n"
    "      The text of buffer 3 into a file, in UTF-8. A line break follows it.\n"
    "  lintara custom insert Invoicing.vbp --id 5 --buffer 3\n"
    "      Use it without a file.\n" LINTARA_CODE_DATABASE LINTARA_BUFFER_STATUSES;

constexpr std::string_view SetFooter =
    "\nExamples:\n"
    "  lintara buffer set 3 trace.txt\n"
    "      The text of a file into buffer 3, without the line break at its end. Line breaks within it\n"
    "      become CR LF, as in the IDE.\n"
    "  lintara buffer get 3 | lintara buffer set 4 -\n"
    "      Copy a buffer.\n" LINTARA_CODE_DATABASE LINTARA_BUFFER_STATUSES;

constexpr std::string_view ClearFooter =
    "\nExample:\n"
    "  lintara buffer clear 3\n"
    "      Make buffer 3 empty.\n" LINTARA_CODE_DATABASE LINTARA_BUFFER_STATUSES;

constexpr std::string_view PathFooter =
    "\nExample:\n"
    "  sqlite3 \"$(lintara buffer path)\" 'SELECT * FROM CPBuffers'\n"
    "      Look into the code database with another program.\n" LINTARA_CODE_DATABASE LINTARA_BUFFER_STATUSES;

constexpr std::string_view InitFooter =
    "\nExample:\n"
    "  lintara buffer init ~/lintara\n"
    "      Make ~/lintara/Assistants.mdb, and use it from now on.\n"
    "\nThe folder is made when there is none, and remembered as the user's setting CodeDbPath. A code\n"
    "database that is in it stays as it is. Any other file of that name is left alone, and is an "
    "error.\n" LINTARA_BUFFER_STATUSES;

constexpr std::string_view ImportFooter =
    "\nExamples:\n"
    "  lintara buffer import /mnt/old/Assistants.mdb\n"
    "      Copy the buffers of a code database of the old format into the user's own.\n"
    "  lintara buffer import /mnt/old/Assistants.mdb --replace\n"
    "      The same, over other texts that the buffers hold.\n"
    "\nAll ten buffers are copied, or none; one that the old file does not have becomes empty. The old file\n"
    "is only read.\n" LINTARA_CODE_DATABASE LINTARA_BUFFER_STATUSES;

OptionInfo DatabaseOption() {
    OptionInfo option = ValueOption("database", "DIR", "Folder of the code database", {});
    option.isPath = true;
    return option;
}

ArgumentInfo NumberArgument() {
    static constexpr std::string_view numbers[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
    return {.name = "N", .description = "Number of the buffer, 0 to 9", .values = numbers};
}

std::int32_t NumberOf(const OptionReader& given) {
    const auto number = ParseBufferNumber("N", given.Argument(0));
    Require(number.has_value(), number ? "" : number.error());
    return *number;
}

CodeDatabase FindDatabase(const OptionReader& given, Environment& environment) {
    const auto folder = given.TextOf("database");
    return CodeDatabase::Find(folder ? DatabaseFolder(*folder) : std::nullopt, environment);
}

std::size_t LineCount(const Text& code) {
    const auto feeds = std::count(code.begin(), code.end(), u'\n');
    return code.empty() ? 0 : static_cast<std::size_t>(feeds) + (code.ends_with(u'\n') ? 0 : 1);
}

std::string ListLine(std::size_t number, const Text& code) {
    std::string line = std::to_string(number) + "  ";
    if (code.empty()) {
        return line + "(empty)\n";
    }
    const std::size_t lines = LineCount(code);
    const Text first = code.substr(0, code.find_first_of(u"\r\n"));
    return line + std::to_string(lines) + (lines == 1 ? " line   " : " lines  ") + Printable(first) + "\n";
}

ExitStatus RunList(const OptionReader& given, Environment& environment) {
    const CodeDatabase database = FindDatabase(given, environment);
    const CodeDatabase::Buffers buffers = database.ReadAll();
    Json all = Json::array();
    std::string table;
    for (std::size_t number = 0; number < buffers.size(); ++number) {
        all.push_back({{"buffer", number}, {"code", JsonText(buffers[number])}});
        table += ListLine(number, buffers[number]);
    }
    environment.streams.out.Write(
        given.Flag("json") ? Dump({{"database", JsonPath(database.file())}, {"buffers", std::move(all)}})
                           : table);
    return ExitStatus::Done;
}

ExitStatus RunGet(const OptionReader& given, Environment& environment) {
    const std::int32_t number = NumberOf(given);
    const Text code = FindDatabase(given, environment).Read(number);
    const std::string printed = ToUtf8(code) + "\n";
    environment.streams.out.Write(ForReader(printed, environment.streams.outIsTerminal));
    if (TextOfFile(printed) != code) {
        Messages(environment.streams, false)
            .Warning(
                {{},
                 0,
                 "buffer " + std::to_string(number) +
                     " holds characters or line breaks that a text file does not give back as they are"});
    }
    return ExitStatus::Done;
}

ExitStatus RunSet(const OptionReader& given, Environment& environment) {
    const std::int32_t number = NumberOf(given);
    const std::string file = given.Argument(1);
    const auto code = ReadText(SourceFromArgument(file.empty() ? "-" : file), environment.streams.in);
    if (!code) {
        throw std::runtime_error(code.error());
    }
    FindDatabase(given, environment).Store(number, *code);
    return ExitStatus::Done;
}

ExitStatus RunClear(const OptionReader& given, Environment& environment) {
    const std::int32_t number = NumberOf(given);
    FindDatabase(given, environment).Store(number, {});
    return ExitStatus::Done;
}

ExitStatus RunPath(const OptionReader& given, Environment& environment) {
    const std::filesystem::path file = FindDatabase(given, environment).file();
    environment.streams.out.Write((environment.streams.outIsTerminal ? PrintablePath(file) : file.string()) +
                                  "\n");
    return ExitStatus::Done;
}

ExitStatus RunInit(const OptionReader& given, Environment& environment) {
    const std::string done = InitCodeDatabase(given.Argument(0), environment);
    Messages(environment.streams, false).Note(done);
    return ExitStatus::Done;
}

// What the buffers are to hold.
CodeDatabase::Buffers TextsOf(const platform::JetBuffers& imported) {
    CodeDatabase::Buffers buffers;
    std::ranges::transform(imported, buffers.begin(), [](const auto& code) { return code.value_or(Text()); });
    return buffers;
}

// The numbers of buffers whose texts would be lost, as a list for people; "" when there is none.
std::string Overwritten(const CodeDatabase::Buffers& before, const CodeDatabase::Buffers& after) {
    std::string numbers;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (!before[i].empty() && before[i] != after[i]) {
            numbers += (numbers.empty() ? "" : ", ") + std::to_string(i);
        }
    }
    return numbers;
}

ExitStatus RunImport(const OptionReader& given, Environment& environment) {
    const std::string file = given.Argument(0);
    const auto imported = platform::ReadJetBuffers(file);
    if (!imported) {
        throw std::runtime_error(file + ": " + imported.error());
    }
    const CodeDatabase database = FindDatabase(given, environment);
    const CodeDatabase::Buffers buffers = TextsOf(*imported);
    const std::string lost = given.Flag("replace") ? "" : Overwritten(database.ReadAll(), buffers);
    if (!lost.empty()) {
        throw std::runtime_error(database.file().string() + ": other texts are in the buffers " + lost +
                                 "; --replace puts the imported ones in their place");
    }
    database.StoreAll(buffers);
    const auto filled = std::ranges::count_if(buffers, [](const Text& code) { return !code.empty(); });
    Messages(environment.streams, false)
        .Note(std::to_string(filled) + (filled == 1 ? " buffer was" : " buffers were") + " imported into " +
              PrintablePath(database.file()));
    return ExitStatus::Done;
}

}  // namespace

CommandInfo BufferListCommand() {
    return {.name = "buffer list",
            .description = "Show the buffers",
            .footer = ListFooter,
            .arguments = {},
            .options = {DatabaseOption(), JsonOption()},
            .run = RunList};
}

CommandInfo BufferGetCommand() {
    return {.name = "buffer get",
            .description = "Print the text of a buffer",
            .footer = GetFooter,
            .arguments = {NumberArgument()},
            .options = {DatabaseOption()},
            .run = RunGet};
}

CommandInfo BufferSetCommand() {
    return {.name = "buffer set",
            .description = "Change the text of a buffer",
            .footer = SetFooter,
            .arguments = {NumberArgument(),
                          {.name = "FILE",
                           .description = "The new text, - or nothing for standard input",
                           .required = false}},
            .options = {DatabaseOption()},
            .run = RunSet};
}

CommandInfo BufferClearCommand() {
    return {.name = "buffer clear",
            .description = "Make a buffer empty",
            .footer = ClearFooter,
            .arguments = {NumberArgument()},
            .options = {DatabaseOption()},
            .run = RunClear};
}

CommandInfo BufferPathCommand() {
    return {.name = "buffer path",
            .description = "Print where the code database is",
            .footer = PathFooter,
            .arguments = {},
            .options = {DatabaseOption()},
            .run = RunPath};
}

CommandInfo BufferInitCommand() {
    return {.name = "buffer init",
            .description = "Make an empty code database",
            .footer = InitFooter,
            .arguments = {{.name = "DIR", .description = "The folder to make it in"}},
            .options = {},
            .run = RunInit};
}

CommandInfo BufferImportCommand() {
    const OptionInfo replace{.name = "replace", .description = "Overwrite other texts in the buffers"};
    return {.name = "buffer import",
            .description = "Copy the buffers of a code database of the old format",
            .footer = ImportFooter,
            .arguments = {{.name = "OLD", .description = "The old Assistants.mdb"}},
            .options = {replace, DatabaseOption()},
            .run = RunImport};
}

}  // namespace lintara::cli
