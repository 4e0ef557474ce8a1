#include "cli/serve/session.h"

#include "base/statement.h"
#include "platform/memory_settings.h"

#include <utility>

namespace lintara::cli {
namespace {

// Stands where people would be asked: the endpoint's streams belong to a program.
class NobodyToAsk final : public hostmodel::DatabaseLocator {
  public:
    Result<Text> BrowseForCodeDb(TextView) override { return Text(); }
};

Platform PlatformFor(Platform machine, bool isolated) {
    machine.screen = nullptr;
    machine.makeDatabaseLocator = [] { return std::make_shared<NobodyToAsk>(); };
    if (isolated) {
        machine.settings = std::make_shared<platform::MemorySettings>();
        machine.databaseEngine = nullptr;
    }
    return machine;
}

}  // namespace

Session::State::State(const Platform& machine, const std::shared_ptr<Identity>& identity, bool isolated)
    : platform(PlatformFor(machine, isolated)),
      globals(std::make_shared<workspace::WorkspaceGlobals>(workspace, identity)),
      lintara(platform) {
    lintara.oG = globals;
    if (isolated) {
        // An open database is what the library takes, without looking for one.
        Attempt(globals->SetCodeDb(std::make_shared<platform::MemoryDatabase>()));
    }
}

Session::Session(Platform platform, std::shared_ptr<Identity> identity)
    : Session(std::move(platform), std::move(identity), false) {}

Session::Session(Platform platform, std::shared_ptr<Identity> identity, bool isolated)
    : platform_(std::move(platform)), identity_(std::move(identity)), isolated_(isolated) {
    Reset();
}

Session Session::Isolated(Platform platform, std::shared_ptr<Identity> identity) {
    return {std::move(platform), std::move(identity), true};
}

void Session::Reset() {
    state_ = std::make_unique<State>(platform_, identity_, isolated_);
}

}  // namespace lintara::cli
