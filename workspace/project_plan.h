// Which files make up the projects that a path names, found before any component is read.
#pragma once

#include "base/text.h"
#include "workspace/diagnostic.h"
#include "workspace/open.h"
#include "workspace/project_file.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <vector>

namespace lintara::workspace {

struct PlannedComponent {
    std::filesystem::path path;
    FileEntry entry;  // line 0 where no project file names it
};

struct PlannedProject {
    Text name;
    std::filesystem::path path;
    std::vector<PlannedComponent> components;
    std::vector<std::filesystem::path> otherFiles;
};

struct ProjectPlan {
    std::vector<PlannedProject> projects;
    bool isGroup = false;
    std::size_t startup = 0;  // which project is the active one
    Diagnostics warnings;
    Diagnostics unreadable;  // about files that are left out, as OpenOptions::unreadable has it
};

[[nodiscard]] std::expected<ProjectPlan, Diagnostics> PlanProjects(const std::filesystem::path& path,
                                                                   const OpenOptions& options);

}  // namespace lintara::workspace
