// The IDE's object model and the services object over a workspace: the library's host where there is no IDE.
//
// The handles are views of the workspace's data: they are valid while the project that they show is open.
#pragma once

#include "base/identity.h"
#include "base/text.h"
#include "hostmodel/globals.h"
#include "hostmodel/vbe.h"
#include "workspace/workspace.h"

#include <cstddef>
#include <memory>
#include <optional>

namespace lintara::workspace {

// `Globals` over a workspace. The history members fail: they are those of the window that uses them.
class WorkspaceGlobals : public hostmodel::Globals {
  public:
    // `identity` tells the names of computer and user; without it, reading a name that was not set fails.
    explicit WorkspaceGlobals(Workspace& workspace, std::shared_ptr<Identity> identity = nullptr);

    // Names that win over those of the identity.
    void SetComputerName(Text name) { computerName_ = std::move(name); }
    void SetUserName(Text name) { userName_ = std::move(name); }

    // How many handles to objects of this workspace are alive.
    [[nodiscard]] std::size_t liveHandles() const;

    [[nodiscard]] Result<std::shared_ptr<hostmodel::VBE>> VBE() override;
    [[nodiscard]] Result<Text> ComputerName() override;
    [[nodiscard]] Result<Text> UserName() override;
    [[nodiscard]] Result<Text> TokenBefore(TextView text, TextView separator) override;
    [[nodiscard]] Result<Text> CodeDbPath() override;
    [[nodiscard]] Result<void> SetCodeDbPath(TextView folder) override;
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Database>> CodeDb() override;
    [[nodiscard]] Result<void> SetCodeDb(std::shared_ptr<hostmodel::Database> database) override;
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Dispatch>> HostForm() override;
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Dispatch>> ProjectsData() override;
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Dispatch>> AddInHost() override;
    [[nodiscard]] Result<Text> HistSeparator() override;
    [[nodiscard]] Result<Text> HistCurrentKey() override;
    [[nodiscard]] Result<Text> HistSelKey() override;
    [[nodiscard]] Result<void> SetHistSelKey(TextView key) override;
    [[nodiscard]] Result<Text> HistSelObject() override;
    [[nodiscard]] Result<void> SetHistSelObject(TextView object) override;
    [[nodiscard]] Result<void> LoadWindowState(hostmodel::PlacedWindow& window) override;
    [[nodiscard]] Result<void> SaveWindowState(const hostmodel::PlacedWindow& window) override;

  private:
    Workspace* workspace_;
    std::shared_ptr<Identity> identity_;
    std::shared_ptr<std::size_t> liveHandles_ = std::make_shared<std::size_t>(0);
    std::optional<Text> computerName_;
    std::optional<Text> userName_;
    Text codeDbPath_;
    std::shared_ptr<hostmodel::Database> codeDb_;
};

}  // namespace lintara::workspace
