// What the command line asks for, as plain data: the parts that several commands share. Reading them checks
// all that can be checked without the project (cli/options/shared_options.h).
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "cli/project/text_source.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

enum class Scope { Project, Component, Procedure };

// A caret, given as Component:LINE or Component:LINE:COLUMN. Lines are those that the IDE shows.
struct CaretPlace {
    std::string component;
    Line line{1};
    Column column{1};

    friend bool operator==(const CaretPlace&, const CaretPlace&) = default;
};

struct ScopeOptions {
    Scope scope = Scope::Project;
    std::vector<std::string> components;  // patterns; empty: all
    std::vector<std::string> procedures;  // patterns; empty: all
    std::vector<std::string> excluded;    // patterns of components and of Component.Procedure
    // A pattern that leaves out nothing is told: of the command line, not of a file for many projects.
    bool mustExclude = false;
    std::optional<CaretPlace> at;
};

// Where a number comes from: its procedure's first line and the step, or its line in the module.
enum class Numbering { Procedure, Module };

struct NumberOptions {
    std::int32_t base = 10000;
    std::int32_t step = 5;
    bool renumber = false;
    Numbering numbering = Numbering::Procedure;
};

struct HandlerOptions {
    Text label;
    TextSource code;
    bool refresh = false;
};

// Which edits a command does, or looks for.
struct WorkOptions {
    bool errorHandlers = false;
    bool lineNumbers = false;
};

// What to open.
struct ReadOptions {
    std::filesystem::path path;
    std::string codePage;  // empty: the workspace's default
    bool recursive = false;
    bool skipMissing = false;
    bool keepGoing = false;  // with components that cannot be read left out
    std::optional<std::filesystem::path>
        stdinFilename;  // the component comes from standard input, under that name
};

struct EditOptions {
    bool check = false;
    bool diff = false;
    bool list = false;
    std::optional<std::filesystem::path> output;
    std::string backupSuffix;
    std::vector<std::filesystem::path> allowedOutside;  // folders besides the project's that may be written
    bool exact = false;
    bool strict = false;
    double waitSeconds = 10;

    [[nodiscard]] bool writesInPlace() const { return !check && !diff && !list && !output; }
};

struct OutputOptions {
    bool json = false;
    bool quiet = false;
};

// Of a command that edits a project.
struct EditCommandOptions {
    ReadOptions read;
    ScopeOptions scope;
    EditOptions edit;
    OutputOptions output;
};

}  // namespace lintara::cli
