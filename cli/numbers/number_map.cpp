#include "cli/numbers/number_map.h"

#include "cli/edits/number_insertion.h"
#include "cli/options/option_values.h"
#include "cli/output/json_text.h"
#include "workspace/encoding.h"
#include "workspace/parallel.h"
#include "workspace/path_resolver.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

constexpr int mapVersion = 1;

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
    return "{\"project\": " + Quoted(JsonText(project.name())) +
           ", \"component\": " + Quoted(JsonText(component.name)) +
           ", \"file\": " + Quoted(FileInProject(project, component)) + ", \"procedures\": [" + procedures +
           "]}";
}

struct Part {
    const workspace::Project* project;
    const workspace::Component* component;
    std::string text;
};

SourcePlace PlaceIn(const Json& object) {
    return {Line(object.at("line").get<std::int32_t>()), object.at("fileLine").get<std::int64_t>()};
}

void ReadTriples(const Json& list, bool inserted, std::vector<PlacedNumber>& numbers) {
    for (const Json& number : list) {
        numbers.push_back(
            {.number = number.at(0).get<std::int64_t>(),
             .source = {Line(number.at(1).get<std::int32_t>()), number.at(2).get<std::int64_t>()},
             .inserted = inserted,
             .now = {}});
    }
}

NumberedProcedure ProcedureIn(const Json& object) {
    NumberedProcedure procedure{.name = workspace::FromUtf8(object.at("name").get<std::string>()),
                                .kind = object.at("kind").get<std::string>(),
                                .header = PlaceIn(object)};
    const auto checksum = object.at("checksum").get<std::string>();
    std::from_chars(checksum.data(), checksum.data() + checksum.size(), procedure.checksum, 16);
    ReadTriples(object.at("numbers"), false, procedure.numbers);
    if (object.contains("inserted")) {
        ReadTriples(object.at("inserted"), true, procedure.numbers);
    }
    return procedure;
}

MappedComponent ComponentIn(const Json& object) {
    MappedComponent component{.project = workspace::FromUtf8(object.at("project").get<std::string>()),
                              .component = workspace::FromUtf8(object.at("component").get<std::string>()),
                              .file = object.at("file").get<std::string>(),
                              .procedures = {}};
    for (const Json& procedure : object.at("procedures")) {
        component.procedures.push_back(ProcedureIn(procedure));
    }
    return component;
}

NumberMap MapIn(const Json& object) {
    NumberMap map;
    map.numbers.base = object.at("base").get<std::int32_t>();
    map.numbers.step = object.at("step").get<std::int32_t>();
    map.numbers.numbering =
        ParseNumbering("numbering", object.at("numbering").get<std::string>()).value_or(Numbering::Procedure);
    for (const Json& component : object.at("components")) {
        map.components.push_back(ComponentIn(component));
    }
    return map;
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
    const bool byModule = numbers.numbering == Numbering::Module;
    std::string text = "{\"version\": " + std::to_string(mapVersion) + ", \"numbering\": " +
                       Quoted(numberingWords[static_cast<std::size_t>(numbers.numbering)]) +
                       ", \"base\": " + std::to_string(byModule ? moduleNumberOffset : numbers.base) +
                       ", \"step\": " + std::to_string(byModule ? 1 : numbers.step) + ",\n \"components\": [";
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
    try {
        const Json object = Json::parse(bytes);
        if (object.at("version").get<int>() != mapVersion) {
            return std::unexpected("is a map of another version; build the copy anew");
        }
        return MapIn(object);
    } catch (const Json::exception&) {
        return std::unexpected("is no map of line numbers, or is damaged");
    }
}

std::string FileInProject(const workspace::Project& project, const workspace::Component& component) {
    std::error_code error;
    const fs::path folder = fs::is_directory(project.path(), error)
                                ? workspace::AbsolutePath(project.path())
                                : workspace::AbsolutePath(project.path()).parent_path();
    return workspace::AbsolutePath(component.path).lexically_relative(folder).generic_string();
}

}  // namespace lintara::cli
