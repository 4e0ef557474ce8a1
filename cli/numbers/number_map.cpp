#include "cli/numbers/number_map.h"

#include "base/uninterrupted.h"
#include "cli/edits/number_insertion.h"
#include "cli/options/option_values.h"
#include "cli/output/json_text.h"
#include "workspace/checksum.h"
#include "workspace/encoding.h"
#include "workspace/parallel.h"
#include "workspace/path_resolver.h"
#include "workspace/read_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <limits>
#include <system_error>
#include <utility>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

constexpr int mapVersion = 1;
// How a map begins, whatever its version.
constexpr std::string_view mapBegin = "{\"version\": ";
constexpr std::string_view mapSecond = ", \"numbering\": ";

// A map may hold hundreds of thousands of numbers, so it is put together by hand.
void AppendNumber(std::int64_t number, std::string& out) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out.append(digits.data(), end);
}

std::string Quoted(std::string_view utf8) {
    return Json(utf8).dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string Hexadecimal(std::uint64_t value) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
    return {digits.data(), end};
}

void AppendNumbers(const NumberedProcedure& procedure, bool inserted, std::string& out) {
    const char* separator = "";
    for (const PlacedNumber& number : procedure.numbers) {
        if (number.inserted == inserted) {
            out += separator;
            out += '[';
            AppendNumber(number.number, out);
            out += ',';
            AppendNumber(number.source.line.value(), out);
            out += ',';
            AppendNumber(number.source.fileLine, out);
            out += ']';
            separator = ",";
        }
    }
}

void AppendProcedure(const NumberedProcedure& procedure, std::string& out) {
    out += "{\"name\": " + Quoted(JsonText(procedure.name)) + ", \"kind\": " + Quoted(procedure.kind) +
           ", \"line\": ";
    AppendNumber(procedure.header.line.value(), out);
    out += ", \"fileLine\": ";
    AppendNumber(procedure.header.fileLine, out);
    out += ", \"checksum\": \"" + Hexadecimal(procedure.checksum) + "\", \"numbers\": [";
    AppendNumbers(procedure, false, out);
    out += ']';
    if (std::ranges::any_of(procedure.numbers, &PlacedNumber::inserted)) {
        out += ", \"inserted\": [";
        AppendNumbers(procedure, true, out);
        out += ']';
    }
    out += '}';
}

// "" for a component without numbers.
std::string ComponentText(const workspace::Project& project, const workspace::Component& component) {
    const SourceLines source(*component.module);
    std::string procedures;
    for (const NumberedProcedure& procedure : PlacedNumbersOf(*component.module, source)) {
        if (!procedure.numbers.empty()) {
            procedures += procedures.empty() ? "\n   " : ",\n   ";
            AppendProcedure(procedure, procedures);
        }
    }
    if (procedures.empty()) {
        return {};
    }
    std::string bytes;
    component.module->AppendCurrentBytes(bytes);
    return "{\"project\": " + Quoted(JsonText(project.name())) +
           ", \"component\": " + Quoted(JsonText(component.name)) +
           ", \"file\": " + Quoted(FileInProject(project, component)) + ", \"copy\": \"" +
           Hexadecimal(workspace::Checksum(bytes)) + "\", \"procedures\": [" + procedures + "]}";
}

struct Part {
    const workspace::Project* project;
    const workspace::Component* component;
    std::string text;
};

// Something in a map that no map has.
struct Damage {};

constexpr std::int64_t largestLine = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t largestNumber = 9'999'999'999;  // of ten digits

// Every level of brackets costs memory, of which a map needs few. Brackets in texts count, too, as no map has
// any there that are not closed.
bool IsNestedDeeply(std::string_view bytes) {
    constexpr int deepest = 100;
    int depth = 0;
    for (const char c : bytes) {
        depth += c == '[' || c == '{' ? 1 : c == ']' || c == '}' ? -1 : 0;
        if (depth > deepest) {
            return true;
        }
    }
    return false;
}

std::int64_t WholeNumberIn(const Json& value, std::int64_t least, std::int64_t most) {
    if (!value.is_number_integer() ||
        (value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(most))) {
        throw Damage();
    }
    const auto number = value.get<std::int64_t>();
    if (number < least || number > most) {
        throw Damage();
    }
    return number;
}

std::int32_t SettingIn(const Json& value) {
    return static_cast<std::int32_t>(WholeNumberIn(value, std::numeric_limits<std::int32_t>::min(),
                                                   std::numeric_limits<std::int32_t>::max()));
}

SourcePlace PlaceIn(const Json& line, const Json& fileLine) {
    return {Line(static_cast<std::int32_t>(WholeNumberIn(line, 1, largestLine))),
            WholeNumberIn(fileLine, 1, largestLine)};
}

void ReadTriples(const Json& list, bool inserted, std::vector<PlacedNumber>& numbers) {
    for (const Json& number : list) {
        numbers.push_back({.number = WholeNumberIn(number.at(0), 0, largestNumber),
                           .source = PlaceIn(number.at(1), number.at(2)),
                           .inserted = inserted,
                           .now = {}});
    }
}

// One of the words that `KindWord` has for procedures.
std::string KindIn(const Json& value) {
    constexpr std::array<std::string_view, 5> kinds = {"Sub", "Function", "Property Get", "Property Let",
                                                       "Property Set"};
    auto kind = value.get<std::string>();
    if (std::ranges::find(kinds, kind) == kinds.end()) {
        throw Damage();
    }
    return kind;
}

std::uint64_t ChecksumIn(const std::string& digits) {
    std::uint64_t checksum = 0;
    const char* const last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, checksum, 16);
    if (error != std::errc() || end != last) {
        throw Damage();
    }
    return checksum;
}

NumberedProcedure ProcedureIn(const Json& object) {
    NumberedProcedure procedure{.name = workspace::FromUtf8(object.at("name").get<std::string>()),
                                .kind = KindIn(object.at("kind")),
                                .header = PlaceIn(object.at("line"), object.at("fileLine")),
                                .checksum = ChecksumIn(object.at("checksum").get<std::string>())};
    ReadTriples(object.at("numbers"), false, procedure.numbers);
    if (object.contains("inserted")) {
        ReadTriples(object.at("inserted"), true, procedure.numbers);
    }
    const bool allBelow = std::ranges::all_of(procedure.numbers, [&](const PlacedNumber& number) {
        return number.source.line >= procedure.header.line &&
               number.source.fileLine >= procedure.header.fileLine;
    });
    if (!allBelow) {
        throw Damage();
    }
    return procedure;
}

// A project may name files beside its folder, so ".." may stand first, and nowhere else.
std::string FileIn(const Json& value) {
    auto file = value.get<std::string>();
    const fs::path path(file);
    const auto below = std::ranges::find_if(path, [](const fs::path& part) { return part != ".."; });
    if (path.is_absolute() || below == path.end() || std::find(below, path.end(), "..") != path.end()) {
        throw Damage();
    }
    return file;
}

MappedComponent ComponentIn(const Json& object) {
    MappedComponent component{.project = workspace::FromUtf8(object.at("project").get<std::string>()),
                              .component = workspace::FromUtf8(object.at("component").get<std::string>()),
                              .file = FileIn(object.at("file")),
                              .copy = {},
                              .procedures = {}};
    if (object.contains("copy")) {
        component.copy = ChecksumIn(object.at("copy").get<std::string>());
    }
    for (const Json& procedure : object.at("procedures")) {
        component.procedures.push_back(ProcedureIn(procedure));
    }
    return component;
}

NumberMap MapIn(const Json& object) {
    NumberMap map;
    map.numbers.base = SettingIn(object.at("base"));
    map.numbers.step = SettingIn(object.at("step"));
    map.numbers.numbering =
        ParseNumbering("numbering", object.at("numbering").get<std::string>()).value_or(Numbering::Procedure);
    for (const Json& component : object.at("components")) {
        map.components.push_back(ComponentIn(component));
    }
    return map;
}

std::string HeadOfMap(const NumberOptions& numbers) {
    const bool byModule = numbers.numbering == Numbering::Module;
    return std::string(mapBegin) + std::to_string(mapVersion) + std::string(mapSecond) +
           Quoted(numberingWords[static_cast<std::size_t>(numbers.numbering)]) +
           ", \"base\": " + std::to_string(byModule ? moduleNumberOffset : numbers.base) +
           ", \"step\": " + std::to_string(byModule ? 1 : numbers.step);
}

// Whether this program wrote the file, in this version or another one.
bool IsNumberMap(const fs::path& path) {
    std::error_code error;
    if (!fs::is_regular_file(fs::symlink_status(path, error))) {
        return false;
    }
    std::array<char, 64> head{};
    std::ifstream file(path, std::ios::binary);
    file.read(head.data(), head.size());
    const std::string_view text(head.data(), static_cast<std::size_t>(file.gcount()));
    return text.starts_with(mapBegin) && text.contains(mapSecond);
}

}  // namespace

std::string NumberMapText(const workspace::Workspace& workspace, const NumberOptions& numbers) {
    std::vector<Part> parts;
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            parts.push_back({project.get(), component.get(), {}});
        }
    }
    workspace::InParallel(parts.size(), [&](std::size_t i) {
        parts[i].text = ComponentText(*parts[i].project, *parts[i].component);
    });
    std::string text = HeadOfMap(numbers) + ",\n \"components\": [";
    const char* separator = "\n  ";
    for (const Part& part : parts) {
        if (!part.text.empty()) {
            text += separator;
            text += part.text;
            separator = ",\n  ";
        }
    }
    return text + "]}\n";
}

std::expected<NumberMap, std::string> ParseNumberMap(std::string_view bytes) {
    if (std::cmp_greater(bytes.size(), largestMap) || IsNestedDeeply(bytes)) {
        return std::unexpected("is no map of line numbers, or is damaged");
    }
    try {
        const Json object = Json::parse(bytes);
        if (WholeNumberIn(object.at("version"), 0, largestLine) != mapVersion) {
            return std::unexpected("is a map of another version; build the copy anew");
        }
        return MapIn(object);
    } catch (const Json::exception&) {
    } catch (const Damage&) {
    }
    return std::unexpected("is no map of line numbers, or is damaged");
}

std::expected<void, std::string> RemoveNumberMap(const fs::path& folder) {
    const fs::path path = folder / numberMapName;
    std::error_code error;
    const auto remove = [&] { return fs::remove(path, error); };
    if (IsNumberMap(path) && !Uninterrupted(error, remove) && error) {
        return std::unexpected("the map of an earlier copy cannot be removed: " +
                               workspace::SystemMessage(error.value()));
    }
    return {};
}

std::string FileInProject(const workspace::Project& project, const workspace::Component& component) {
    std::error_code error;
    const fs::path folder = fs::is_directory(project.path(), error)
                                ? workspace::AbsolutePath(project.path())
                                : workspace::AbsolutePath(project.path()).parent_path();
    return workspace::AbsolutePath(component.path).lexically_relative(folder).generic_string();
}

}  // namespace lintara::cli
