// The suite's services object, late-bound.
#pragma once

#include "com/host_object.h"
#include "hostmodel/globals.h"

namespace lintara::com {

class HostGlobals final : public hostmodel::Globals, public HostObject {
  public:
    using HostObject::HostObject;
    using DispatchPtr = std::shared_ptr<hostmodel::Dispatch>;

    Result<std::shared_ptr<hostmodel::VBE>> VBE() override;
    Result<Text> ComputerName() override;
    Result<Text> UserName() override;
    Result<Text> TokenBefore(TextView text, TextView separator) override;

    Result<Text> CodeDbPath() override;
    Result<void> SetCodeDbPath(TextView folder) override;
    Result<std::shared_ptr<hostmodel::Database>> CodeDb() override;
    // A database that is none of the host's engine is a type mismatch.
    Result<void> SetCodeDb(std::shared_ptr<hostmodel::Database> database) override;

    Result<DispatchPtr> HostForm() override;
    Result<DispatchPtr> ProjectsData() override;
    Result<DispatchPtr> AddInHost() override;
    Result<Text> HistSeparator() override;
    Result<Text> HistCurrentKey() override;
    Result<Text> HistSelKey() override;
    Result<void> SetHistSelKey(TextView key) override;
    Result<Text> HistSelObject() override;
    Result<void> SetHistSelObject(TextView object) override;

    // The host gets the window as an object, see window_object.h.
    Result<void> LoadWindowState(hostmodel::PlacedWindow& window) override;
    Result<void> SaveWindowState(const hostmodel::PlacedWindow& window) override;
};

}  // namespace lintara::com
