// Saving of what was edited, all or nothing: either every changed file of the workspace gets its new content,
// or none does; see workspace/replace_files.h.
#pragma once

#include "workspace/diagnostic.h"
#include "workspace/save_options.h"
#include "workspace/workspace.h"

#include <expected>
#include <filesystem>
#include <string>
#include <vector>

namespace lintara::workspace {

// A component whose file a save would write anew.
struct ChangedFile {
    const Project* project = nullptr;
    const workspace::Component* component = nullptr;
};

// The components whose bytes differ from those that were loaded, in project order. Compared in parallel.
[[nodiscard]] std::vector<ChangedFile> ChangedFiles(const Workspace& workspace);

// Those of the files that a save in place would refuse to write because of where they lie.
[[nodiscard]] Diagnostics ChangesOutside(const std::vector<ChangedFile>& files,
                                         const std::vector<std::filesystem::path>& allowedOutside);

// Saves in place; the value is the files written. Refused, with nothing changed, when a line cannot be
// encoded, a file changed on disk since it was loaded or lies outside of the folder that was opened, or
// anything cannot be written. File modes are kept; symbolic links are followed, not replaced. Takes the
// project's lock unless this process holds it. To go on after a save, open the projects anew or call
// AcceptSaved: these still are what was loaded, with edits.
[[nodiscard]] std::expected<std::vector<std::filesystem::path>, Diagnostics> Save(const Workspace& workspace,
                                                                                  const SaveOptions& options);

// Call it after Save has succeeded: what was written counts as what was loaded, so that nothing is edited any
// more. Texts that were inserted are read as opening the file reads them: a line that the IDE hides is
// hidden.
void AcceptSaved(Workspace& workspace);

// Writes a complete copy of the open projects, edits included, into the folder `output`, which is made if
// need be: project files, components, and the files that belong to them (.frx and the like, resources). The
// sources stay untouched. The value is the files written.
[[nodiscard]] std::expected<std::vector<std::filesystem::path>, Diagnostics> SaveCopy(
    const Workspace& workspace, const std::filesystem::path& output, const SaveOptions& options);

// Finishes or undoes what an interrupted save left around the project that `path` names. The value is a line
// for people on each thing done; empty when there was nothing to do. Open does this by itself.
[[nodiscard]] std::expected<std::vector<std::string>, Diagnostics> Recover(const std::filesystem::path& path);

}  // namespace lintara::workspace
