// A services object that knows a history of places, and nothing else of the suite: enough for the history
// window. Its other members fail.
#pragma once

#include "dialogs/window_placement.h"
#include "history/entry_format.h"
#include "hostmodel/globals.h"

#include <array>
#include <memory>

namespace lintara::window {

class RecordedHistory final : public hostmodel::Globals {
  public:
    // The latest entry first; "" for slots that are empty.
    using Entries = std::array<Text, history::EntriesPerGroup>;

    struct Contents {
        Entries back;
        Entries next;
        Text separator;
        Text currentKey;
    };

    // `placement` remembers where the window stood; null when nobody does.
    RecordedHistory(Contents contents, std::shared_ptr<dialogs::WindowPlacement> placement);

    // The key and the tag of the entry that the user chose; "" without a choice.
    [[nodiscard]] const Text& chosenKey() const { return chosenKey_; }
    [[nodiscard]] const Text& chosenObject() const { return chosenObject_; }

    Result<std::shared_ptr<hostmodel::VBE>> VBE() override;
    Result<std::shared_ptr<hostmodel::Dispatch>> ProjectsData() override;
    Result<Text> HistSeparator() override { return contents_.separator; }
    Result<Text> HistCurrentKey() override { return contents_.currentKey; }
    Result<Text> HistSelKey() override { return chosenKey_; }
    Result<void> SetHistSelKey(TextView key) override;
    Result<Text> HistSelObject() override { return chosenObject_; }
    Result<void> SetHistSelObject(TextView object) override;
    Result<void> LoadWindowState(hostmodel::PlacedWindow& window) override;
    Result<void> SaveWindowState(const hostmodel::PlacedWindow& window) override;

    Result<Text> ComputerName() override;
    Result<Text> UserName() override;
    Result<Text> TokenBefore(TextView text, TextView separator) override;
    Result<Text> CodeDbPath() override;
    Result<void> SetCodeDbPath(TextView folder) override;
    Result<std::shared_ptr<hostmodel::Database>> CodeDb() override;
    Result<void> SetCodeDb(std::shared_ptr<hostmodel::Database> database) override;
    Result<std::shared_ptr<hostmodel::Dispatch>> HostForm() override;
    Result<std::shared_ptr<hostmodel::Dispatch>> AddInHost() override;

  private:
    Contents contents_;
    std::shared_ptr<dialogs::WindowPlacement> placement_;
    Text chosenKey_;
    Text chosenObject_;
};

}  // namespace lintara::window
