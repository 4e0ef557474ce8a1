// A host with a navigation history: the services object of a workspace with one project, "Project1", and what
// is reached from it by name. All that is asked of it is noted in order.
#pragma once

#include "base/numbers.h"
#include "base/utf8.h"
#include "hostmodel/dispatch.h"
#include "tests/support/code_fixture.h"
#include "workspace/object_model.h"

#include <array>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace lintara::support {

// An object whose members are what a test says.
class ScriptedObject final : public hostmodel::Dispatch {
  public:
    using Value = hostmodel::Value;
    using Members = std::function<Result<Value>(TextView name, std::span<const Value> arguments)>;
    using Properties = std::function<Result<void>(TextView name, const Value& value)>;

    explicit ScriptedObject(Members members, Properties properties = nullptr)
        : members_(std::move(members)), properties_(std::move(properties)) {}

    Result<Value> Invoke(TextView name, std::span<const Value> arguments) override {
        return members_(name, arguments);
    }
    Result<void> Put(TextView name, const Value& value) override {
        return properties_ ? properties_(name, value) : Result<void>(NoMember());
    }

    static std::unexpected<HostError> NoMember() {
        return Failure(ErrorNumber::MemberNotSupported, "there is no such member");
    }

  private:
    Members members_;
    Properties properties_;
};

class HistoryGlobals final : public workspace::WorkspaceGlobals {
  public:
    using Value = hostmodel::Value;
    using DispatchPtr = std::shared_ptr<hostmodel::Dispatch>;

    explicit HistoryGlobals(workspace::Workspace& workspace) : WorkspaceGlobals(workspace) {}

    std::array<Text, 10> back;
    std::array<Text, 10> next;
    Text separator = u"|";
    Text currentKey;
    Text selKey = u"earlier";
    Text selObject = u"earlier object";
    Text project = u"Project1";  // the one that has a history
    bool hasHistory = true;
    std::vector<std::string> log;

    Result<DispatchPtr> HostForm() override {
        auto timer = std::make_shared<ScriptedObject>(
            [](TextView, auto) { return ScriptedObject::NoMember(); },
            [this](TextView name, const Value& value) -> Result<void> {
                log.push_back("tmrMain." + ToUtf8(name) + (std::get<bool>(value) ? "=True" : "=False"));
                return {};
            });
        return ObjectWith(u"tmrMain", std::move(timer));
    }
    Result<DispatchPtr> ProjectsData() override {
        return std::make_shared<ScriptedObject>(
            [this](TextView name, std::span<const Value> arguments) -> Result<Value> {
                if (!hasHistory || !name.empty() || arguments.size() != 1 || arguments[0] != Value(project)) {
                    return ScriptedObject::NoMember();
                }
                return ObjectWith(u"HistItems", std::make_shared<ScriptedObject>(
                                                    [this](TextView member, std::span<const Value> index) {
                                                        return HistItem(member, index);
                                                    }));
            });
    }
    Result<DispatchPtr> AddInHost() override {
        return std::make_shared<ScriptedObject>(
            [this](TextView name, std::span<const Value> arguments) -> Result<Value> {
                std::string call = ToUtf8(name);
                for (const Value& argument : arguments) {
                    call += " '" + ToUtf8(std::get<Text>(argument)) + "'";
                }
                log.push_back(call);
                return Value();
            });
    }
    Result<Text> HistSeparator() override { return separator; }
    Result<Text> HistCurrentKey() override { return currentKey; }
    Result<Text> HistSelKey() override { return selKey; }
    Result<void> SetHistSelKey(TextView key) override {
        selKey = key;
        log.push_back("HistSelKey='" + ToUtf8(key) + "'");
        return {};
    }
    Result<Text> HistSelObject() override { return selObject; }
    Result<void> SetHistSelObject(TextView object) override {
        selObject = object;
        log.push_back("HistSelObject='" + ToUtf8(object) + "'");
        return {};
    }
    Result<void> LoadWindowState(hostmodel::PlacedWindow& window) override {
        log.push_back("load " + ToUtf8(window.Name()));
        return {};
    }
    Result<void> SaveWindowState(const hostmodel::PlacedWindow& window) override {
        log.push_back("save " + ToUtf8(window.Name()));
        return {};
    }

  private:
    static DispatchPtr ObjectWith(Text member, DispatchPtr object) {
        return std::make_shared<ScriptedObject>(
            [member = std::move(member), object = std::move(object)](TextView name, auto) -> Result<Value> {
                return name == member ? Result<Value>(object) : ScriptedObject::NoMember();
            });
    }

    Result<Value> HistItem(TextView name, std::span<const Value> index) {
        if (index.empty()) {
            log.push_back(ToUtf8(name));
            return Value();
        }
        const auto& list = name == u"HistBackItem" ? back : next;
        log.push_back(ToUtf8(name) + " " + std::to_string(std::get<std::int32_t>(index[0])));
        return list.at(static_cast<std::size_t>(std::get<std::int32_t>(index[0])));
    }
};

// The services object with the workspace that it stands on.
struct HistoryHost {
    CodeFixture fixture{"Sub A()\nEnd Sub"};
    std::shared_ptr<HistoryGlobals> services = std::make_shared<HistoryGlobals>(fixture.workspace());

    [[nodiscard]] const std::shared_ptr<HistoryGlobals>& globals() const { return services; }
};

}  // namespace lintara::support
