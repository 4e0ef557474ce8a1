// Makes up projects and modules that look like the business applications people have: for tests that need
// much code and for the benchmarks. The same options give the same bytes on every machine. Lines end in CR
// LF, texts are windows-1252.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace lintara::support {

struct ModuleOptions {
    std::size_t lines = 1000;     // shown lines, exactly
    std::size_t procedures = 40;  // about as many
    double propertyShare = 0.5;   // of the procedures, as Get with Let or Set
    std::uint64_t seed = 1;
    std::string name = "Generated";
};

// The bytes of a class file. Every procedure has a name of its own, the property procedures of one excepted.
// Options that leave a procedure fewer than 8 lines give fewer procedures.
[[nodiscard]] std::string GenerateModule(const ModuleOptions& options);

struct ProjectOptions {
    std::size_t files = 12;    // components; the project file comes on top
    std::size_t lines = 6000;  // of all components, heads included, hidden lines of procedures not; exactly
    double propertyShare = 0.5;
    std::uint64_t seed = 1;
    std::string name = "Generated";
};

struct GeneratedFile {
    std::filesystem::path path;  // relative
    std::string bytes;
};

struct GeneratedProject {
    std::filesystem::path projectFile;  // relative, one of the files
    std::vector<GeneratedFile> files;

    [[nodiscard]] std::size_t bytes() const;
};

// A project of modules, classes and forms in folders of their own. At least 60 lines a file are needed.
[[nodiscard]] GeneratedProject GenerateProject(const ProjectOptions& options);

// Writes the files below `folder`, which is made if need be, and returns the project file's path.
std::filesystem::path WriteProject(const GeneratedProject& project, const std::filesystem::path& folder);

}  // namespace lintara::support
