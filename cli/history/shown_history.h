// The services object of a project whose history is shown: what the library asks for by name, over a recorded
// history.
#pragma once

#include "cli/history/places.h"
#include "workspace/object_model.h"

#include <memory>
#include <optional>

namespace lintara::cli {

// A choice in the history window.
struct ChosenPlace {
    bool isBack = true;
    std::size_t index = 0;
    RecordedPlace place;
};

class ShownHistory final : public workspace::WorkspaceGlobals {
  public:
    // The cleanups drop the places whose components `workspace` does not have.
    ShownHistory(workspace::Workspace& workspace, History history);

    // As the cleanups left it.
    [[nodiscard]] const History& history() const;
    // What the library had opened, if anything.
    [[nodiscard]] std::optional<ChosenPlace> chosen() const;

    Result<std::shared_ptr<hostmodel::Dispatch>> ProjectsData() override;
    Result<std::shared_ptr<hostmodel::Dispatch>> AddInHost() override;
    Result<Text> HistSeparator() override { return Text(historySeparator); }
    // Where the user is.
    Result<Text> HistCurrentKey() override { return history::KeyOf(0, historySeparator); }
    Result<Text> HistSelKey() override { return selectedKey_; }
    Result<void> SetHistSelKey(TextView key) override;
    Result<Text> HistSelObject() override { return selectedObject_; }
    Result<void> SetHistSelObject(TextView object) override;

  private:
    struct Lists;

    std::shared_ptr<Lists> lists_;
    std::shared_ptr<Text> openedKey_ = std::make_shared<Text>();
    Text selectedKey_;
    Text selectedObject_;
};

}  // namespace lintara::cli
