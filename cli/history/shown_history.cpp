#include "cli/history/shown_history.h"

#include <functional>
#include <span>
#include <utility>

namespace lintara::cli {
namespace {

using hostmodel::Dispatch;
using hostmodel::Value;

std::unexpected<HostError> NoSuchMember() {
    return Failure(ErrorNumber::MemberNotSupported, "the recorded history has no such member");
}

// An object whose members one function gives.
class NamedMembers final : public Dispatch {
  public:
    using Members = std::function<Result<Value>(TextView name, std::span<const Value> arguments)>;

    explicit NamedMembers(Members members) : members_(std::move(members)) {}

    Result<Value> Invoke(TextView name, std::span<const Value> arguments) override {
        return members_(name, arguments);
    }
    Result<void> Put(TextView /*name*/, const Value& /*value*/) override { return NoSuchMember(); }

  private:
    Members members_;
};

// The entry of an index; "" for a slot that is empty.
Result<Value> EntryAt(const std::vector<RecordedPlace>& places, std::span<const Value> arguments) {
    const auto* const index = arguments.size() == 1 ? std::get_if<std::int32_t>(&arguments[0]) : nullptr;
    if (index == nullptr || *index < 0 || std::cmp_greater_equal(*index, history::EntriesPerGroup)) {
        return Failure(ErrorNumber::SubscriptOutOfRange, "the history has no such entry");
    }
    const auto at = static_cast<std::size_t>(*index);
    return Value(at < places.size() ? EntryOf(places[at]) : Text());
}

void DropGone(const workspace::Workspace& workspace, std::vector<RecordedPlace>& places) {
    std::erase_if(places,
                  [&](const RecordedPlace& place) { return ComponentOf(place, workspace) == nullptr; });
}

}  // namespace

struct ShownHistory::Lists {
    workspace::Workspace& workspace;
    History history;

    Result<Value> Member(TextView name, std::span<const Value> arguments) {
        if (name == u"CleanupBackHistory") {
            DropGone(workspace, history.back);
            return Value();
        }
        if (name == u"CleanupNextHistory") {
            DropGone(workspace, history.next);
            return Value();
        }
        if (name == u"HistBackItem") {
            return EntryAt(history.back, arguments);
        }
        return name == u"HistNextItem" ? EntryAt(history.next, arguments) : NoSuchMember();
    }
};

ShownHistory::ShownHistory(workspace::Workspace& workspace, History history)
    : WorkspaceGlobals(workspace),
      lists_(std::make_shared<Lists>(Lists{.workspace = workspace, .history = std::move(history)})) {}

const History& ShownHistory::history() const {
    return lists_->history;
}

std::optional<ChosenPlace> ShownHistory::chosen() const {
    for (std::size_t slot = 0; slot < history::SlotCount && !openedKey_->empty(); ++slot) {
        const bool isBack = slot < history::EntriesPerGroup;
        const std::size_t index = slot % history::EntriesPerGroup;
        const auto& places = isBack ? lists_->history.back : lists_->history.next;
        if (*openedKey_ == history::KeyOf(slot, historySeparator) && index < places.size()) {
            return ChosenPlace{.isBack = isBack, .index = index, .place = places[index]};
        }
    }
    return std::nullopt;
}

Result<std::shared_ptr<Dispatch>> ShownHistory::ProjectsData() {
    const auto items = std::make_shared<NamedMembers>(
        [lists = lists_](TextView name, auto arguments) { return lists->Member(name, arguments); });
    const auto project =
        std::make_shared<NamedMembers>([items](TextView name, auto /*arguments*/) -> Result<Value> {
            return name == u"HistItems" ? Result<Value>(std::shared_ptr<Dispatch>(items)) : NoSuchMember();
        });
    return std::make_shared<NamedMembers>([project](TextView name, auto arguments) -> Result<Value> {
        return name.empty() && arguments.size() == 1 ? Result<Value>(std::shared_ptr<Dispatch>(project))
                                                     : NoSuchMember();
    });
}

Result<std::shared_ptr<Dispatch>> ShownHistory::AddInHost() {
    return std::make_shared<NamedMembers>(
        [opened = openedKey_](TextView name, std::span<const Value> arguments) -> Result<Value> {
            if (name != u"OpenHistObject" || arguments.size() != 2) {
                return NoSuchMember();
            }
            const auto* const key = std::get_if<Text>(&arguments[1]);
            if (key == nullptr) {
                return Failure(ErrorNumber::TypeMismatch, "the key is no text");
            }
            *opened = *key;
            return Value();
        });
}

Result<void> ShownHistory::SetHistSelKey(TextView key) {
    selectedKey_ = key;
    return {};
}

Result<void> ShownHistory::SetHistSelObject(TextView object) {
    selectedObject_ = object;
    return {};
}

}  // namespace lintara::cli
