#include "assistant/show_history.h"

#include "base/statement.h"
#include "hostmodel/history_items.h"

#include <array>
#include <memory>

namespace lintara::assistant {

using hostmodel::Dispatch;
using hostmodel::Globals;
using hostmodel::Value;

namespace {

Result<void> EnableTimer(Globals& globals, bool enabled) {
    std::shared_ptr<Dispatch> hostForm;
    Assign(hostForm, globals.HostForm());
    if (hostForm == nullptr) {
        return Failure(ErrorNumber::ObjectNotSet, "the host has no form");
    }
    return Then(InvokeForObject(*hostForm, u"tmrMain"),
                [&](const auto& timer) { return timer->Put(u"Enabled", enabled); });
}

// The host's timer stands still while this lives.
class StoppedTimer {
  public:
    explicit StoppedTimer(Globals& globals) : globals_(globals) { Attempt(EnableTimer(globals_, false)); }
    ~StoppedTimer() {
        try {
            Attempt(EnableTimer(globals_, true));
        } catch (...) {
            // There is nothing else by which the timer could be reached.
        }
    }

    StoppedTimer(const StoppedTimer&) = delete;
    StoppedTimer& operator=(const StoppedTimer&) = delete;

  private:
    Globals& globals_;
};

void CleanUp(Globals& globals) {
    std::shared_ptr<Dispatch> histItems;
    Assign(histItems, hostmodel::HistItemsOfActiveProject(globals));
    if (histItems != nullptr) {
        Value ignored;
        Assign(ignored, histItems->Invoke(u"CleanupBackHistory", {}));
        Assign(ignored, histItems->Invoke(u"CleanupNextHistory", {}));
    }
}

void OpenChosen(Globals& globals) {
    Text key;
    Assign(key, globals.HistSelKey());
    if (key.empty()) {
        return;
    }
    std::shared_ptr<Dispatch> addIn;
    Assign(addIn, globals.AddInHost());
    Text object;
    const bool hasObject = Assign(object, globals.HistSelObject());
    if (addIn != nullptr && hasObject) {
        const std::array<Value, 2> arguments{object, key};
        Value ignored;
        Assign(ignored, addIn->Invoke(u"OpenHistObject", arguments));
    }
}

}  // namespace

void ShowHistory(Globals& globals, const Platform& platform) {
    const StoppedTimer stopped(globals);
    CleanUp(globals);
    Attempt(globals.SetHistSelKey(u""));
    if (platform.showHistoryWindow) {
        platform.showHistoryWindow(globals);
    }
    OpenChosen(globals);
}

}  // namespace lintara::assistant
