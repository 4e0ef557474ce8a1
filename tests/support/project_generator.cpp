#include "tests/support/project_generator.h"

#include "tests/support/code_writer.h"
#include "tests/support/random.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>

namespace lintara::support {
namespace {

constexpr std::size_t classHeadLines = 14;
constexpr std::size_t linesOfAProcedure = 19;

struct Kind {
    std::string_view entry;
    std::string_view prefix;
    std::string_view folder;
    std::string_view ending;
};
constexpr std::array kinds{Kind{"Module", "mod", "modules", ".bas"}, Kind{"Class", "C", "classes", ".cls"},
                           Kind{"Form", "frm", "forms", ".frm"}};

std::string ComponentBytes(const Kind& kind, const std::string& name, std::size_t lines, double propertyShare,
                           std::uint64_t seed) {
    CodeWriter writer(seed);
    std::size_t head = 1;
    if (kind.entry == "Class") {
        head = classHeadLines;
        writer.ClassHead(name);
    } else if (kind.entry == "Form") {
        head = std::max<std::size_t>(40, lines / 4);
        writer.FormHead(name, head);
    } else {
        writer.ModuleHead(name);
    }
    const std::size_t code = lines - head;
    writer.Code(code, std::max<std::size_t>(1, code / linesOfAProcedure), propertyShare);
    return writer.Take();
}

std::string ProjectEntry(const Kind& kind, const std::string& name) {
    const std::string path = std::string(kind.folder) + "\\" + name + std::string(kind.ending);
    const std::string named = kind.entry == "Form" ? path : name + "; " + path;
    return std::string(kind.entry) + "=" + named + "\r\n";
}

}  // namespace

std::size_t GeneratedProject::bytes() const {
    std::size_t sum = 0;
    for (const GeneratedFile& file : files) {
        sum += file.bytes.size();
    }
    return sum;
}

std::string GenerateModule(const ModuleOptions& options) {
    CodeWriter writer(options.seed);
    writer.ClassHead(options.name);
    writer.Code(options.lines, options.procedures, options.propertyShare);
    return writer.Take();
}

GeneratedProject GenerateProject(const ProjectOptions& options) {
    GeneratedProject project;
    Random random(options.seed);
    std::string entries = "Type=Exe\r\n";
    std::size_t left = options.lines;
    for (std::size_t i = 0; i < options.files; ++i) {
        const std::size_t share = left / (options.files - i);
        // Sizes vary, but the last files must not starve.
        const std::size_t lines =
            i + 1 == options.files ? left : share - share / 4 + random.Below(share / 2 + 1);
        const Kind& kind = random.Pick(kinds);
        const std::string name = std::string(kind.prefix) + "Ledger" + std::to_string(i + 1);
        entries += ProjectEntry(kind, name);
        project.files.push_back(
            {.path = std::filesystem::path(kind.folder) / (name + std::string(kind.ending)),
             .bytes = ComponentBytes(kind, name, lines, options.propertyShare, random.Next())});
        left -= lines;
    }
    entries += "Startup=\"Sub Main\"\r\nName=\"" + options.name + "\"\r\nMajorVer=1\r\nMinorVer=0\r\n";
    project.projectFile = options.name + ".vbp";
    project.files.push_back({.path = project.projectFile, .bytes = std::move(entries)});
    return project;
}

std::filesystem::path WriteProject(const GeneratedProject& project, const std::filesystem::path& folder) {
    for (const GeneratedFile& file : project.files) {
        const std::filesystem::path path = folder / file.path;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream stream(path, std::ios::binary | std::ios::trunc);
        stream << file.bytes;
        if (!stream.flush()) {
            throw std::runtime_error("cannot write " + path.string());
        }
    }
    return folder / project.projectFile;
}

}  // namespace lintara::support
