// What the command line asks for, as plain data. Parsing checks all that can be checked without the project:
// numbers, combinations that contradict, patterns that say nothing.
#pragma once

#include "base/position.h"
#include "cli/exit_status.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lintara::cli {

enum class Verb { List, Insert, Remove, Member, Recover };

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
    std::optional<CaretPlace> at;
};

struct NumberOptions {
    std::int32_t base = 10000;
    std::int32_t step = 5;
    bool renumber = false;
};

struct ReadOptions {
    std::string codePage;  // empty: the workspace's default
    bool recursive = false;
    bool skipMissing = false;
};

struct EditOptions {
    bool check = false;
    bool diff = false;
    std::optional<std::filesystem::path> output;
    std::string backupSuffix;
    bool exact = false;
    bool strict = false;
    double waitSeconds = 10;

    [[nodiscard]] bool writesInPlace() const { return !check && !diff && !output; }
};

struct Options {
    Verb verb = Verb::List;
    std::filesystem::path path;
    ReadOptions read;
    ScopeOptions scope;
    NumberOptions numbers;
    EditOptions edit;
    bool json = false;
    bool quiet = false;
};

// A command line that ends the run at once: help or the version on standard output, or a complaint on
// standard error.
struct EarlyExit {
    ExitStatus status = ExitStatus::Usage;
    std::string out;
    std::string err;
};

// `arguments` are those behind the program's name.
[[nodiscard]] std::expected<Options, EarlyExit> ParseCommandLine(std::span<const std::string> arguments);

}  // namespace lintara::cli
