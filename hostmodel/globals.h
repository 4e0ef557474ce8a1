// The suite's services object. It hands out the IDE and what the suite's components share.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "hostmodel/database.h"
#include "hostmodel/dispatch.h"
#include "hostmodel/vbe.h"

#include <cstdint>
#include <memory>

namespace lintara::hostmodel {

// A dialog as far as the saving of its placement goes; lengths are twips.
class PlacedWindow {
  public:
    virtual ~PlacedWindow() = default;

    // The name under which the placement is kept.
    [[nodiscard]] virtual Text Name() const = 0;
    [[nodiscard]] virtual std::int32_t Left() const = 0;
    [[nodiscard]] virtual std::int32_t Top() const = 0;
    [[nodiscard]] virtual std::int32_t Width() const = 0;
    [[nodiscard]] virtual std::int32_t Height() const = 0;
    virtual void Move(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) = 0;
};

class Globals {
  public:
    virtual ~Globals() = default;

    [[nodiscard]] virtual Result<std::shared_ptr<hostmodel::VBE>> VBE() = 0;

    [[nodiscard]] virtual Result<Text> ComputerName() = 0;
    [[nodiscard]] virtual Result<Text> UserName() = 0;
    // The part of `text` before the last `separator`; "" when there is none.
    [[nodiscard]] virtual Result<Text> TokenBefore(TextView text, TextView separator) = 0;

    // The folder of the code database, without a separator at its end.
    [[nodiscard]] virtual Result<Text> CodeDbPath() = 0;
    [[nodiscard]] virtual Result<void> SetCodeDbPath(TextView folder) = 0;
    // The open code database; null until one is opened.
    [[nodiscard]] virtual Result<std::shared_ptr<Database>> CodeDb() = 0;
    [[nodiscard]] virtual Result<void> SetCodeDb(std::shared_ptr<Database> database) = 0;

    // The navigation history. HistSelKey and HistSelObject are the key and the tag of the entry that the user
    // chose in its window; without a choice the key is empty.
    [[nodiscard]] virtual Result<std::shared_ptr<Dispatch>> HostForm() = 0;
    [[nodiscard]] virtual Result<std::shared_ptr<Dispatch>> ProjectsData() = 0;
    [[nodiscard]] virtual Result<std::shared_ptr<Dispatch>> AddInHost() = 0;
    [[nodiscard]] virtual Result<Text> HistSeparator() = 0;
    [[nodiscard]] virtual Result<Text> HistCurrentKey() = 0;
    [[nodiscard]] virtual Result<Text> HistSelKey() = 0;
    [[nodiscard]] virtual Result<void> SetHistSelKey(TextView key) = 0;
    [[nodiscard]] virtual Result<Text> HistSelObject() = 0;
    [[nodiscard]] virtual Result<void> SetHistSelObject(TextView object) = 0;

    // Restores or saves a dialog's placement.
    [[nodiscard]] virtual Result<void> LoadWindowState(PlacedWindow& window) = 0;
    [[nodiscard]] virtual Result<void> SaveWindowState(const PlacedWindow& window) = 0;
};

}  // namespace lintara::hostmodel
