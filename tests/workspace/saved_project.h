// A project on disk for the tests of saving: opened, edited, compared.
#pragma once

#include "tests/support/temporary_folder.h"
#include "workspace/open.h"
#include "workspace/save.h"

#include <map>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace lintara::workspace {

inline std::string Sentences(const Diagnostics& diagnostics) {
    std::string sentences;
    for (const Diagnostic& each : diagnostics) {
        sentences += each.ToString() + "\n";
    }
    return sentences;
}

class SavedProject {
  public:
    using Files = std::map<std::string, std::string>;

    // Writes the files and opens the one that is named first.
    SavedProject(const Files& files, std::string project) : project_(std::move(project)) {
        for (const auto& [name, bytes] : files) {
            folder.Write(name, bytes);
        }
    }

    void Open() {
        workspace.Clear();
        const auto opened = workspace::Open(workspace, path(), {});
        ASSERT_TRUE(opened.has_value()) << Sentences(opened.error());
    }
    // Puts a comment line in front of every component.
    void EditAll() {
        for (const auto& project : workspace.projects()) {
            for (const auto& component : project->components()) {
                ASSERT_TRUE(component->module->InsertLines(Line{1}, u"'edited").has_value());
            }
        }
    }
    // "" when all went well, else the errors. All that was written by the constructor may be saved.
    std::string Save(SaveOptions options = {}) {
        options.allowedOutside.push_back(folder.path());
        const auto saved = workspace::Save(workspace, options);
        return saved ? "" : Sentences(saved.error());
    }
    [[nodiscard]] std::filesystem::path path() const { return folder / project_; }
    [[nodiscard]] Module& module(std::size_t index) const {
        return *workspace.projects().front()->components()[index]->module;
    }

    support::TemporaryFolder folder;
    Workspace workspace;

  private:
    std::string project_;
};

}  // namespace lintara::workspace
