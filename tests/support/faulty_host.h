// A host that misbehaves on demand: it stands before another services object and the objects that come from
// it, records every call, and lets a test say which of them fail, yield no object, or throw. It also counts
// the handles that are alive, so that a test sees when one is kept.
#pragma once

#include "base/result.h"
#include "hostmodel/dispatch.h"
#include "hostmodel/globals.h"
#include "hostmodel/vbe.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace lintara::support {

enum class Fault {
    None,
    Fails,
    Empty,   // succeeds with a null object, an empty text, zero
    Throws,  // what no host call may do, and what the calling frame stops all the same
};

class FaultPlan {
  public:
    // Asked before each call, with its place in the sequence of calls, from 0, and its name as in
    // "CodeModule.Lines". None by default.
    std::function<Fault(std::size_t index, std::string_view call)> fault;
    std::vector<std::string> calls;
    std::size_t liveHandles = 0;

    [[nodiscard]] std::size_t CountOf(std::string_view call) const {
        return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), call));
    }

    // Makes `call`, unless the plan says otherwise.
    template <class Call>
    auto Make(std::string_view name, Call&& call) -> std::invoke_result_t<Call> {
        const Fault planned = fault ? fault(calls.size(), name) : Fault::None;
        calls.emplace_back(name);
        switch (planned) {
            case Fault::Fails:
                return Failure(ErrorNumber::HostFailure, "the test wants this call to fail");
            case Fault::Empty:
                return std::invoke_result_t<Call>();
            case Fault::Throws:
                throw std::runtime_error("the test wants this call to throw");
            case Fault::None:
                break;
        }
        return std::forward<Call>(call)();
    }
};

using FaultPlanPtr = std::shared_ptr<FaultPlan>;

// What every object of the faulty host has: the object behind it, and the plan.
template <class Interface>
class Faulty : public Interface {
  public:
    Faulty(std::shared_ptr<Interface> inner, FaultPlanPtr plan)
        : inner_(std::move(inner)), plan_(std::move(plan)) {
        ++plan_->liveHandles;
    }
    ~Faulty() override { --plan_->liveHandles; }

    Faulty(const Faulty&) = delete;
    Faulty& operator=(const Faulty&) = delete;

  protected:
    // The call's result, an object of type Wrapper around what came from behind.
    template <class Wrapper, class Call>
    auto Wrapped(std::string_view name, Call&& call) {
        auto result = plan_->Make(name, std::forward<Call>(call));
        using Handle = typename decltype(result)::value_type;
        if (result && *result != nullptr) {
            result = Handle(std::make_shared<Wrapper>(*result, plan_));
        }
        return result;
    }

    std::shared_ptr<Interface> inner_;
    FaultPlanPtr plan_;
};

// Its calls bear the names that are called, as in "Dispatch.Count"; "Dispatch." is the default member.
class FaultyDispatch : public Faulty<hostmodel::Dispatch> {
  public:
    using Faulty::Faulty;
    using Value = hostmodel::Value;

    Result<Value> Invoke(TextView name, std::span<const Value> arguments) override {
        auto result = plan_->Make("Dispatch." + std::string(name.begin(), name.end()),
                                  [&] { return inner_->Invoke(name, arguments); });
        using Handle = std::shared_ptr<hostmodel::Dispatch>;
        if (const auto* object = result ? std::get_if<Handle>(&*result) : nullptr; object && *object) {
            result = Handle(std::make_shared<FaultyDispatch>(*object, plan_));
        }
        return result;
    }
    Result<void> Put(TextView name, const Value& value) override {
        return plan_->Make("Dispatch.Put", [&] { return inner_->Put(name, value); });
    }
};

class FaultyMember : public Faulty<hostmodel::Member> {
  public:
    using Faulty::Faulty;
    Result<Line> CodeLocation() override {
        return plan_->Make("Member.CodeLocation", [&] { return inner_->CodeLocation(); });
    }
    Result<hostmodel::MemberType> Type() override {
        return plan_->Make("Member.Type", [&] { return inner_->Type(); });
    }
};

class FaultyMembers : public Faulty<hostmodel::Members> {
  public:
    using Faulty::Faulty;
    Result<std::shared_ptr<hostmodel::Member>> Item(TextView name) override {
        return Wrapped<FaultyMember>("Members.Item", [&] { return inner_->Item(name); });
    }
    Result<std::shared_ptr<hostmodel::Member>> Item(std::int32_t index) override {
        return Wrapped<FaultyMember>("Members.Item", [&] { return inner_->Item(index); });
    }
};

class FaultyCodeModule : public Faulty<hostmodel::CodeModule> {
  public:
    using Faulty::Faulty;
    Result<std::shared_ptr<hostmodel::VBComponent>> Parent() override;
    Result<Text> Lines(Line startLine, std::int32_t count) override {
        return plan_->Make("CodeModule.Lines", [&] { return inner_->Lines(startLine, count); });
    }
    Result<void> InsertLines(Line line, TextView text) override {
        return plan_->Make("CodeModule.InsertLines", [&] { return inner_->InsertLines(line, text); });
    }
    Result<void> DeleteLines(Line startLine, std::int32_t count) override {
        return plan_->Make("CodeModule.DeleteLines", [&] { return inner_->DeleteLines(startLine, count); });
    }
    Result<void> ReplaceLine(Line line, TextView text) override {
        return plan_->Make("CodeModule.ReplaceLine", [&] { return inner_->ReplaceLine(line, text); });
    }
    Result<Line> ProcStartLine(TextView name, hostmodel::MemberKind kind) override {
        return plan_->Make("CodeModule.ProcStartLine", [&] { return inner_->ProcStartLine(name, kind); });
    }
    Result<Line> ProcBodyLine(TextView name, hostmodel::MemberKind kind) override {
        return plan_->Make("CodeModule.ProcBodyLine", [&] { return inner_->ProcBodyLine(name, kind); });
    }
    Result<std::int32_t> ProcCountLines(TextView name, hostmodel::MemberKind kind) override {
        return plan_->Make("CodeModule.ProcCountLines", [&] { return inner_->ProcCountLines(name, kind); });
    }
    Result<Text> ProcOfLine(Line line, hostmodel::MemberKind& kind) override {
        return plan_->Make("CodeModule.ProcOfLine", [&] { return inner_->ProcOfLine(line, kind); });
    }
    Result<std::int32_t> CountOfDeclarationLines() override {
        return plan_->Make("CodeModule.CountOfDeclarationLines",
                           [&] { return inner_->CountOfDeclarationLines(); });
    }
    Result<std::shared_ptr<hostmodel::Members>> Members() override {
        return Wrapped<FaultyMembers>("CodeModule.Members", [&] { return inner_->Members(); });
    }
    Result<bool> Find(TextView target, Position& start, Position& end,
                      hostmodel::FindOptions options) override {
        return plan_->Make("CodeModule.Find", [&] { return inner_->Find(target, start, end, options); });
    }
};

class FaultyCodePane : public Faulty<hostmodel::CodePane> {
  public:
    using Faulty::Faulty;
    Result<std::shared_ptr<hostmodel::CodeModule>> CodeModule() override {
        return Wrapped<FaultyCodeModule>("CodePane.CodeModule", [&] { return inner_->CodeModule(); });
    }
    Result<hostmodel::Selection> GetSelection() override {
        return plan_->Make("CodePane.GetSelection", [&] { return inner_->GetSelection(); });
    }
    Result<Line> TopLine() override {
        return plan_->Make("CodePane.TopLine", [&] { return inner_->TopLine(); });
    }
    Result<std::int32_t> CountOfVisibleLines() override {
        return plan_->Make("CodePane.CountOfVisibleLines", [&] { return inner_->CountOfVisibleLines(); });
    }
};

class FaultyVBComponent : public Faulty<hostmodel::VBComponent> {
  public:
    using Faulty::Faulty;
    Result<Text> Name() override {
        return plan_->Make("VBComponent.Name", [&] { return inner_->Name(); });
    }
    Result<hostmodel::ComponentType> Type() override {
        return plan_->Make("VBComponent.Type", [&] { return inner_->Type(); });
    }
    Result<std::shared_ptr<hostmodel::CodeModule>> CodeModule() override {
        return Wrapped<FaultyCodeModule>("VBComponent.CodeModule", [&] { return inner_->CodeModule(); });
    }
    Result<std::shared_ptr<hostmodel::Dispatch>> Designer() override {
        return Wrapped<FaultyDispatch>("VBComponent.Designer", [&] { return inner_->Designer(); });
    }
};

inline Result<std::shared_ptr<hostmodel::VBComponent>> FaultyCodeModule::Parent() {
    return Wrapped<FaultyVBComponent>("CodeModule.Parent", [&] { return inner_->Parent(); });
}

class FaultyVBComponents : public Faulty<hostmodel::VBComponents> {
  public:
    using Faulty::Faulty;
    Result<std::shared_ptr<hostmodel::VBComponent>> Item(TextView name) override {
        return Wrapped<FaultyVBComponent>("VBComponents.Item", [&] { return inner_->Item(name); });
    }
};

class FaultyVBProject : public Faulty<hostmodel::VBProject> {
  public:
    using Faulty::Faulty;
    Result<Text> Name() override {
        return plan_->Make("VBProject.Name", [&] { return inner_->Name(); });
    }
    Result<std::shared_ptr<hostmodel::VBComponents>> VBComponents() override {
        return Wrapped<FaultyVBComponents>("VBProject.VBComponents", [&] { return inner_->VBComponents(); });
    }
};

class FaultyVBProjects : public Faulty<hostmodel::VBProjects> {
  public:
    using Faulty::Faulty;
    Result<std::shared_ptr<hostmodel::VBProject>> Item(TextView name) override {
        return Wrapped<FaultyVBProject>("VBProjects.Item", [&] { return inner_->Item(name); });
    }
};

class FaultyVBE : public Faulty<hostmodel::VBE> {
  public:
    using Faulty::Faulty;
    Result<std::shared_ptr<hostmodel::VBProjects>> VBProjects() override {
        return Wrapped<FaultyVBProjects>("VBE.VBProjects", [&] { return inner_->VBProjects(); });
    }
    Result<std::shared_ptr<hostmodel::VBProject>> ActiveVBProject() override {
        return Wrapped<FaultyVBProject>("VBE.ActiveVBProject", [&] { return inner_->ActiveVBProject(); });
    }
    Result<std::shared_ptr<hostmodel::CodePane>> ActiveCodePane() override {
        return Wrapped<FaultyCodePane>("VBE.ActiveCodePane", [&] { return inner_->ActiveCodePane(); });
    }
};

class FaultyGlobals : public Faulty<hostmodel::Globals> {
  public:
    using Faulty::Faulty;
    using DispatchPtr = std::shared_ptr<hostmodel::Dispatch>;

    Result<std::shared_ptr<hostmodel::VBE>> VBE() override {
        return Wrapped<FaultyVBE>("Globals.VBE", [&] { return inner_->VBE(); });
    }
    Result<Text> ComputerName() override {
        return plan_->Make("Globals.ComputerName", [&] { return inner_->ComputerName(); });
    }
    Result<Text> UserName() override {
        return plan_->Make("Globals.UserName", [&] { return inner_->UserName(); });
    }
    Result<Text> TokenBefore(TextView text, TextView separator) override {
        return plan_->Make("Globals.TokenBefore", [&] { return inner_->TokenBefore(text, separator); });
    }
    Result<Text> CodeDbPath() override {
        return plan_->Make("Globals.CodeDbPath", [&] { return inner_->CodeDbPath(); });
    }
    Result<void> SetCodeDbPath(TextView folder) override {
        return plan_->Make("Globals.SetCodeDbPath", [&] { return inner_->SetCodeDbPath(folder); });
    }
    Result<std::shared_ptr<hostmodel::Database>> CodeDb() override {
        return plan_->Make("Globals.CodeDb", [&] { return inner_->CodeDb(); });
    }
    Result<void> SetCodeDb(std::shared_ptr<hostmodel::Database> database) override {
        return plan_->Make("Globals.SetCodeDb", [&] { return inner_->SetCodeDb(database); });
    }
    Result<DispatchPtr> HostForm() override {
        return Wrapped<FaultyDispatch>("Globals.HostForm", [&] { return inner_->HostForm(); });
    }
    Result<DispatchPtr> ProjectsData() override {
        return Wrapped<FaultyDispatch>("Globals.ProjectsData", [&] { return inner_->ProjectsData(); });
    }
    Result<DispatchPtr> AddInHost() override {
        return Wrapped<FaultyDispatch>("Globals.AddInHost", [&] { return inner_->AddInHost(); });
    }
    Result<Text> HistSeparator() override {
        return plan_->Make("Globals.HistSeparator", [&] { return inner_->HistSeparator(); });
    }
    Result<Text> HistCurrentKey() override {
        return plan_->Make("Globals.HistCurrentKey", [&] { return inner_->HistCurrentKey(); });
    }
    Result<Text> HistSelKey() override {
        return plan_->Make("Globals.HistSelKey", [&] { return inner_->HistSelKey(); });
    }
    Result<void> SetHistSelKey(TextView key) override {
        return plan_->Make("Globals.SetHistSelKey", [&] { return inner_->SetHistSelKey(key); });
    }
    Result<Text> HistSelObject() override {
        return plan_->Make("Globals.HistSelObject", [&] { return inner_->HistSelObject(); });
    }
    Result<void> SetHistSelObject(TextView object) override {
        return plan_->Make("Globals.SetHistSelObject", [&] { return inner_->SetHistSelObject(object); });
    }
    Result<void> LoadWindowState(hostmodel::PlacedWindow& window) override {
        return plan_->Make("Globals.LoadWindowState", [&] { return inner_->LoadWindowState(window); });
    }
    Result<void> SaveWindowState(const hostmodel::PlacedWindow& window) override {
        return plan_->Make("Globals.SaveWindowState", [&] { return inner_->SaveWindowState(window); });
    }
};

// Runs `use` with a faulty host over what `make` builds, again and again: first without a fault, then with
// the first call alone showing `fault`, then the second, until every call of a run without faults had its
// turn. `check` sees each outcome; after it no handle but the services object's may be alive.
template <class Make, class Use, class Check>
void WithEveryCallFaulty(Fault fault, Make make, Use use, Check check) {
    constexpr std::size_t NoCall = static_cast<std::size_t>(-1);
    std::size_t calls = 0;
    for (std::size_t faulty = NoCall; faulty == NoCall || faulty < calls; ++faulty) {
        auto subject = make();
        auto plan = std::make_shared<FaultPlan>();
        plan->fault = [=](std::size_t index, std::string_view) {
            return index == faulty ? fault : Fault::None;
        };
        auto globals = std::make_shared<FaultyGlobals>(subject->globals(), plan);
        use(globals);
        if (faulty == NoCall) {
            calls = plan->calls.size();
        }
        check(*subject, *plan, faulty == NoCall ? "no fault" : plan->calls[faulty]);
    }
}

// A host whose call number `number`, from 0, of that name fails, and no other.
inline FaultPlanPtr PlanWithOneFailure(std::string_view name, std::size_t number) {
    auto plan = std::make_shared<FaultPlan>();
    plan->fault = [name, number, seen = std::size_t{0}](std::size_t, std::string_view call) mutable {
        return call == name && seen++ == number ? Fault::Fails : Fault::None;
    };
    return plan;
}

}  // namespace lintara::support
