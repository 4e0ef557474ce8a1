// What the requests of one process work on: the open projects, the library over them, the settings and the
// code database.
#pragma once

#include "assistant/lintara.h"
#include "base/identity.h"
#include "platform/memory_database.h"
#include "workspace/diagnostic.h"
#include "workspace/object_model.h"
#include "workspace/workspace.h"

#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

namespace lintara::cli {

class Session {
  public:
    // What the machine provides. Nobody can be asked where the code database lies.
    Session(Platform platform, std::shared_ptr<Identity> identity);
    // The same with settings and a code database of its own, in memory.
    [[nodiscard]] static Session Isolated(Platform platform, std::shared_ptr<Identity> identity);

    [[nodiscard]] workspace::Workspace& workspace() { return state_->workspace; }
    [[nodiscard]] workspace::WorkspaceGlobals& globals() { return *state_->globals; }
    [[nodiscard]] Lintara& lintara() { return state_->lintara; }
    // Null where there are none.
    [[nodiscard]] SettingsStore* settings() { return state_->platform.settings.get(); }
    // What was to be told when the projects were opened.
    [[nodiscard]] workspace::Diagnostics& warnings() { return state_->warnings; }

    // Folders in which files may be written though they lie outside of the folder that was opened.
    [[nodiscard]] const std::vector<std::filesystem::path>& allowedOutside() const { return allowedOutside_; }
    void AllowOutside(std::vector<std::filesystem::path> folders) { allowedOutside_ = std::move(folders); }

    // Closes everything and saves nothing: all is as it was at first.
    void Reset();

  private:
    struct State {
        State(const Platform& machine, const std::shared_ptr<Identity>& identity, bool isolated);

        Platform platform;
        workspace::Workspace workspace;
        std::shared_ptr<workspace::WorkspaceGlobals> globals;
        Lintara lintara;
        workspace::Diagnostics warnings;
    };

    Session(Platform platform, std::shared_ptr<Identity> identity, bool isolated);

    Platform platform_;
    std::shared_ptr<Identity> identity_;
    bool isolated_ = false;
    std::vector<std::filesystem::path> allowedOutside_;
    std::unique_ptr<State> state_;
};

}  // namespace lintara::cli
