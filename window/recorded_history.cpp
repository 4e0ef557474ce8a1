#include "window/recorded_history.h"

#include <utility>

namespace lintara::window {
namespace {

using hostmodel::Dispatch;
using hostmodel::Value;

std::unexpected<HostError> NoSuchMember() {
    return Failure(ErrorNumber::MemberNotSupported, "the recorded history has no such member");
}

// An IDE with one project open.
class OneProject final : public hostmodel::VBProject {
  public:
    Result<Text> Name() override { return Text(u"Project"); }
    Result<std::shared_ptr<hostmodel::VBComponents>> VBComponents() override { return NoSuchMember(); }
};

class OneProjectIde final : public hostmodel::VBE {
  public:
    Result<std::shared_ptr<hostmodel::VBProjects>> VBProjects() override { return NoSuchMember(); }
    Result<std::shared_ptr<hostmodel::VBProject>> ActiveVBProject() override {
        return std::make_shared<OneProject>();
    }
    Result<std::shared_ptr<hostmodel::CodePane>> ActiveCodePane() override { return NoSuchMember(); }
};

// The entries under the names that the window reads them by.
class Items final : public Dispatch {
  public:
    explicit Items(RecordedHistory::Contents contents) : contents_(std::move(contents)) {}

    Result<Value> Invoke(TextView name, std::span<const Value> arguments) override {
        const bool isBack = name == u"HistBackItem";
        if (!isBack && name != u"HistNextItem") {
            return NoSuchMember();
        }
        const RecordedHistory::Entries& entries = isBack ? contents_.back : contents_.next;
        const auto* const index = arguments.size() == 1 ? std::get_if<std::int32_t>(&arguments[0]) : nullptr;
        if (index == nullptr || *index < 0 || static_cast<std::size_t>(*index) >= entries.size()) {
            return Failure(ErrorNumber::SubscriptOutOfRange, "the history has no such entry");
        }
        return Value(entries[static_cast<std::size_t>(*index)]);
    }
    Result<void> Put(TextView /*name*/, const Value& /*value*/) override { return NoSuchMember(); }

  private:
    RecordedHistory::Contents contents_;
};

// An object that yields another one, whatever is asked of it: the projects' data, a project's data.
class WayTo final : public Dispatch {
  public:
    explicit WayTo(std::shared_ptr<Dispatch> goal) : goal_(std::move(goal)) {}

    Result<Value> Invoke(TextView /*name*/, std::span<const Value> /*arguments*/) override {
        return Value(goal_);
    }
    Result<void> Put(TextView /*name*/, const Value& /*value*/) override { return NoSuchMember(); }

  private:
    std::shared_ptr<Dispatch> goal_;
};

}  // namespace

RecordedHistory::RecordedHistory(Contents contents, std::shared_ptr<dialogs::WindowPlacement> placement)
    : contents_(std::move(contents)), placement_(std::move(placement)) {}

Result<std::shared_ptr<hostmodel::VBE>> RecordedHistory::VBE() {
    return std::make_shared<OneProjectIde>();
}

Result<std::shared_ptr<Dispatch>> RecordedHistory::ProjectsData() {
    return std::make_shared<WayTo>(std::make_shared<WayTo>(std::make_shared<Items>(contents_)));
}

Result<void> RecordedHistory::SetHistSelKey(TextView key) {
    chosenKey_ = key;
    return {};
}

Result<void> RecordedHistory::SetHistSelObject(TextView object) {
    chosenObject_ = object;
    return {};
}

Result<void> RecordedHistory::LoadWindowState(hostmodel::PlacedWindow& window) {
    if (placement_ != nullptr) {
        (void)placement_->Load(window);
    }
    return {};
}

Result<void> RecordedHistory::SaveWindowState(const hostmodel::PlacedWindow& window) {
    if (placement_ != nullptr) {
        placement_->Save(window);
    }
    return {};
}

Result<Text> RecordedHistory::ComputerName() {
    return NoSuchMember();
}

Result<Text> RecordedHistory::UserName() {
    return NoSuchMember();
}

Result<Text> RecordedHistory::TokenBefore(TextView /*text*/, TextView /*separator*/) {
    return NoSuchMember();
}

Result<Text> RecordedHistory::CodeDbPath() {
    return NoSuchMember();
}

Result<void> RecordedHistory::SetCodeDbPath(TextView /*folder*/) {
    return NoSuchMember();
}

Result<std::shared_ptr<hostmodel::Database>> RecordedHistory::CodeDb() {
    return NoSuchMember();
}

Result<void> RecordedHistory::SetCodeDb(std::shared_ptr<hostmodel::Database> /*database*/) {
    return NoSuchMember();
}

Result<std::shared_ptr<Dispatch>> RecordedHistory::HostForm() {
    return NoSuchMember();
}

Result<std::shared_ptr<Dispatch>> RecordedHistory::AddInHost() {
    return NoSuchMember();
}

}  // namespace lintara::window
