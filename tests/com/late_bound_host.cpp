#include "tests/com/late_bound_host.h"

#include "com/conversion.h"
#include "tests/com/test_object.h"

#include <utility>

namespace lintara::support {
namespace {

using com::ComPtr;
using hostmodel::MemberKind;
using DispatchPtr = ComPtr<IDispatch>;

// Each makes an object over one of the interfaces; null for null.
DispatchPtr Over(const std::shared_ptr<hostmodel::Dispatch>& object, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::Member>& member, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::Members>& members, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::CodeModule>& module, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::CodePane>& pane, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::VBComponent>& component, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::VBComponents>& components, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::VBProject>& project, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::VBProjects>& projects, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::VBE>& ide, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::Recordset>& rows, const LateBoundHostPtr& host);
DispatchPtr Over(const std::shared_ptr<hostmodel::Database>& database, const LateBoundHostPtr& host);

// A member that gives an object, from a function of the call that yields a handle.
template <class Find>
TestMember Object(LateBoundHostPtr host, Find find) {
    return [host = std::move(host), find = std::move(find)](const TestCall& call) {
        return call.Reply(Over(Checked(find(call)), host));
    };
}

template <class Find>
TestMember Plain(Find find) {
    return [find = std::move(find)](const TestCall& call) { return call.Reply(Checked(find(call))); };
}

template <class Effect>
TestMember Procedure(Effect effect) {
    return [effect = std::move(effect)](const TestCall& call) {
        Checked(effect(call));
        return S_OK;
    };
}

// A property of texts.
template <class Get, class Set>
TestMember TextProperty(Get get, Set set) {
    return [get = std::move(get), set = std::move(set)](const TestCall& call) {
        if (call.IsPut()) {
            Checked(set(call.text(0)));
            return S_OK;
        }
        return call.Reply(TextView(Checked(get())));
    };
}

Result<std::int32_t> NumberOf(Result<Line> line) {
    return Then(std::move(line), [](Line found) { return Result<std::int32_t>(found.value()); });
}

template <class Enum>
Result<std::int32_t> NumberOf(Result<Enum> value) {
    return Then(std::move(value),
                [](Enum found) { return Result<std::int32_t>(static_cast<std::int32_t>(found)); });
}

hostmodel::Value ValueOf(const VARIANT& value) {
    switch (value.vt) {
        case VT_BSTR:
            return Text(com::ViewOf(value.bstrVal));
        case VT_I4:
            return static_cast<std::int32_t>(value.lVal);
        case VT_BOOL:
            return value.boolVal != VARIANT_FALSE;
        case VT_EMPTY:
            return {};
        default:
            throw CallFails{DISP_E_TYPEMISMATCH};
    }
}

HRESULT Reply(const TestCall& call, const hostmodel::Value& value, const LateBoundHostPtr& host) {
    if (const auto* text = std::get_if<Text>(&value)) {
        return call.Reply(TextView(*text));
    }
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return call.Reply(*number);
    }
    if (const auto* truth = std::get_if<bool>(&value)) {
        return call.Reply(*truth);
    }
    if (const auto* object = std::get_if<std::shared_ptr<hostmodel::Dispatch>>(&value)) {
        return call.Reply(Over(*object, host));
    }
    return S_OK;
}

DispatchPtr Over(const std::shared_ptr<hostmodel::Dispatch>& object, const LateBoundHostPtr& host) {
    if (object == nullptr) {
        return nullptr;
    }
    return MakeTestObject("Object", host, {}, [=](const Text& name, const TestCall& call) {
        if (call.IsPut()) {
            Checked(object->Put(name, ValueOf(call.argument(0))));
            return S_OK;
        }
        std::vector<hostmodel::Value> arguments;
        for (std::size_t i = 0; i < call.count(); ++i) {
            arguments.push_back(ValueOf(call.argument(i)));
        }
        return Reply(call, Checked(object->Invoke(name, arguments)), host);
    });
}

DispatchPtr Over(const std::shared_ptr<hostmodel::Member>& member, const LateBoundHostPtr& host) {
    if (member == nullptr) {
        return nullptr;
    }
    return MakeTestObject(
        "Member", host,
        {{u"CodeLocation", Plain([=](const TestCall&) { return NumberOf(member->CodeLocation()); })},
         {u"Type", Plain([=](const TestCall&) { return NumberOf(member->Type()); })}});
}

DispatchPtr Over(const std::shared_ptr<hostmodel::Members>& members, const LateBoundHostPtr& host) {
    if (members == nullptr) {
        return nullptr;
    }
    const auto find = [=](const TestCall& call) {
        return call.argument(0).vt == VT_I4 ? members->Item(call.number(0)) : members->Item(call.text(0));
    };
    return MakeTestObject("Members", host, {{u"Item", Object(host, find)}});
}

Result<bool> Find(hostmodel::CodeModule& module, const TestCall& call) {
    Position start{Line{call.referred(1)}, Column{call.referred(2)}};
    Position end{Line{call.referred(3)}, Column{call.referred(4)}};
    const Result<bool> found =
        module.Find(call.text(0), start, end,
                    {.wholeWord = call.truth(5), .matchCase = call.truth(6), .patternSearch = call.truth(7)});
    call.Write(1, start.line.value());
    call.Write(2, start.column.value());
    call.Write(3, end.line.value());
    call.Write(4, end.column.value());
    return found;
}

Result<Text> ProcOfLine(hostmodel::CodeModule& module, const TestCall& call) {
    auto kind = static_cast<MemberKind>(call.referred(1));
    Result<Text> name = module.ProcOfLine(Line{call.number(0)}, kind);
    call.Write(1, static_cast<std::int32_t>(kind));
    return name;
}

MemberKind KindOf(const TestCall& call) {
    return static_cast<MemberKind>(call.number(1));
}

DispatchPtr Over(const std::shared_ptr<hostmodel::CodeModule>& m, const LateBoundHostPtr& host) {
    if (m == nullptr) {
        return nullptr;
    }
    using Call = TestCall;
    return MakeTestObject(
        "CodeModule", host,
        {{u"Parent", Object(host, [=](const Call&) { return m->Parent(); })},
         {u"Members", Object(host, [=](const Call&) { return m->Members(); })},
         {u"Lines", Plain([=](const Call& c) { return m->Lines(Line{c.number(0)}, c.number(1)); })},
         {u"InsertLines",
          Procedure([=](const Call& c) { return m->InsertLines(Line{c.number(0)}, c.text(1)); })},
         {u"DeleteLines",
          Procedure([=](const Call& c) { return m->DeleteLines(Line{c.number(0)}, c.number(1)); })},
         {u"ReplaceLine",
          Procedure([=](const Call& c) { return m->ReplaceLine(Line{c.number(0)}, c.text(1)); })},
         {u"ProcStartLine",
          Plain([=](const Call& c) { return NumberOf(m->ProcStartLine(c.text(0), KindOf(c))); })},
         {u"ProcBodyLine",
          Plain([=](const Call& c) { return NumberOf(m->ProcBodyLine(c.text(0), KindOf(c))); })},
         {u"ProcCountLines", Plain([=](const Call& c) { return m->ProcCountLines(c.text(0), KindOf(c)); })},
         {u"ProcOfLine", Plain([=](const Call& c) { return ProcOfLine(*m, c); })},
         {u"CountOfDeclarationLines", Plain([=](const Call&) { return m->CountOfDeclarationLines(); })},
         {u"Find", Plain([=](const Call& c) { return Find(*m, c); })}});
}

Result<void> GetSelection(hostmodel::CodePane& pane, const TestCall& call) {
    for (std::size_t place = 0; place < 4; ++place) {
        (void)call.referred(place);  // before anything is done
    }
    return Then(pane.GetSelection(), [&](const hostmodel::Selection& selection) -> Result<void> {
        call.Write(0, selection.start.line.value());
        call.Write(1, selection.start.column.value());
        call.Write(2, selection.end.line.value());
        call.Write(3, selection.end.column.value());
        return {};
    });
}

DispatchPtr Over(const std::shared_ptr<hostmodel::CodePane>& pane, const LateBoundHostPtr& host) {
    if (pane == nullptr) {
        return nullptr;
    }
    return MakeTestObject(
        "CodePane", host,
        {{u"CodeModule", Object(host, [=](const TestCall&) { return pane->CodeModule(); })},
         {u"GetSelection", Procedure([=](const TestCall& call) { return GetSelection(*pane, call); })},
         {u"TopLine", Plain([=](const TestCall&) { return NumberOf(pane->TopLine()); })},
         {u"CountOfVisibleLines", Plain([=](const TestCall&) { return pane->CountOfVisibleLines(); })}});
}

DispatchPtr Over(const std::shared_ptr<hostmodel::VBComponent>& component, const LateBoundHostPtr& host) {
    if (component == nullptr) {
        return nullptr;
    }
    return MakeTestObject(
        "VBComponent", host,
        {{u"Name", Plain([=](const TestCall&) { return component->Name(); })},
         {u"Type", Plain([=](const TestCall&) { return NumberOf(component->Type()); })},
         {u"CodeModule", Object(host, [=](const TestCall&) { return component->CodeModule(); })},
         {u"Designer", Object(host, [=](const TestCall&) { return component->Designer(); })}});
}

DispatchPtr Over(const std::shared_ptr<hostmodel::VBComponents>& components, const LateBoundHostPtr& host) {
    if (components == nullptr) {
        return nullptr;
    }
    return MakeTestObject(
        "VBComponents", host,
        {{u"Item", Object(host, [=](const TestCall& call) { return components->Item(call.text(0)); })}});
}

DispatchPtr Over(const std::shared_ptr<hostmodel::VBProject>& project, const LateBoundHostPtr& host) {
    if (project == nullptr) {
        return nullptr;
    }
    return MakeTestObject(
        "VBProject", host,
        {{u"Name", Plain([=](const TestCall&) { return project->Name(); })},
         {u"VBComponents", Object(host, [=](const TestCall&) { return project->VBComponents(); })}});
}

DispatchPtr Over(const std::shared_ptr<hostmodel::VBProjects>& projects, const LateBoundHostPtr& host) {
    if (projects == nullptr) {
        return nullptr;
    }
    return MakeTestObject(
        "VBProjects", host,
        {{u"Item", Object(host, [=](const TestCall& call) { return projects->Item(call.text(0)); })}});
}

DispatchPtr Over(const std::shared_ptr<hostmodel::VBE>& ide, const LateBoundHostPtr& host) {
    if (ide == nullptr) {
        return nullptr;
    }
    return MakeTestObject(
        "VBE", host,
        {{u"VBProjects", Object(host, [=](const TestCall&) { return ide->VBProjects(); })},
         {u"ActiveVBProject", Object(host, [=](const TestCall&) { return ide->ActiveVBProject(); })},
         {u"ActiveCodePane", Object(host, [=](const TestCall&) { return ide->ActiveCodePane(); })}});
}

DispatchPtr FieldOf(const std::shared_ptr<hostmodel::Recordset>& rows, const Text& name,
                    const LateBoundHostPtr& host) {
    const auto value = [=](const TestCall& call) {
        if (call.IsPut()) {
            Checked(rows->SetField(name, ValueOf(call.argument(0))));
            return S_OK;
        }
        return Reply(call, Checked(rows->Field(name)), host);
    };
    return MakeTestObject("Field", host, {{u"Value", value}});
}

DispatchPtr FieldsOf(const std::shared_ptr<hostmodel::Recordset>& rows, const LateBoundHostPtr& host) {
    return MakeTestObject("Fields", host, {{u"Item", [=](const TestCall& call) {
                                                return call.Reply(FieldOf(rows, Text(call.text(0)), host));
                                            }}});
}

DispatchPtr Over(const std::shared_ptr<hostmodel::Recordset>& rows, const LateBoundHostPtr& host) {
    if (rows == nullptr) {
        return nullptr;
    }
    using Call = TestCall;
    return MakeTestObject(
        "Recordset", host,
        {{u"Close", Procedure([=](const Call&) { return rows->Close(); })},
         {u"Index",
          Procedure([=](const Call& c) { return c.IsPut() ? rows->SetIndex(c.text(0)) : Result<void>(); })},
         {u"Seek", Procedure([=](const Call& c) { return rows->Seek(c.text(0), c.number(1)); })},
         {u"NoMatch", Plain([=](const Call&) { return rows->NoMatch(); })},
         {u"AddNew", Procedure([=](const Call&) { return rows->AddNew(); })},
         {u"Edit", Procedure([=](const Call&) { return rows->Edit(); })},
         {u"Update", Procedure([=](const Call&) { return rows->Update(); })},
         {u"Fields", [=](const Call& c) { return c.Reply(FieldsOf(rows, host)); }}});
}

DispatchPtr Over(const std::shared_ptr<hostmodel::Database>& database, const LateBoundHostPtr& host) {
    if (database == nullptr) {
        return nullptr;
    }
    const auto open = [=](const TestCall& call) {
        if (call.number(1) != 1) {
            throw CallFails{E_INVALIDARG};
        }
        return database->OpenTable(call.text(0));
    };
    return MakeTestObject("Database", host, {{u"OpenRecordset", Object(host, open)}});
}

std::vector<NamedMember> HistoryMembers(hostmodel::Globals* g, const LateBoundHostPtr& host) {
    return {{u"HostForm", Object(host, [=](const TestCall&) { return g->HostForm(); })},
            {u"ProjectsData", Object(host, [=](const TestCall&) { return g->ProjectsData(); })},
            {u"AddInHost", Object(host, [=](const TestCall&) { return g->AddInHost(); })},
            {u"HistSeparator", Plain([=](const TestCall&) { return g->HistSeparator(); })},
            {u"HistCurrentKey", Plain([=](const TestCall&) { return g->HistCurrentKey(); })},
            {u"HistSelKey", TextProperty([=] { return g->HistSelKey(); },
                                         [=](TextView key) { return g->SetHistSelKey(key); })},
            {u"HistSelObject", TextProperty([=] { return g->HistSelObject(); },
                                            [=](TextView object) { return g->SetHistSelObject(object); })}};
}

}  // namespace

com::ComPtr<IDispatch> LateBoundGlobals(hostmodel::Globals& globals, LateBoundHostPtr host) {
    hostmodel::Globals* const g = &globals;
    std::vector<NamedMember> members = HistoryMembers(g, host);
    const auto add = [&](Text name, TestMember member) {
        members.push_back({std::move(name), std::move(member)});
    };
    add(u"VBE", Object(host, [=](const TestCall&) { return g->VBE(); }));
    add(u"ComputerName", Plain([=](const TestCall&) { return g->ComputerName(); }));
    add(u"UserName", Plain([=](const TestCall&) { return g->UserName(); }));
    add(u"TokenBefore", Plain([=](const TestCall& c) { return g->TokenBefore(c.text(0), c.text(1)); }));
    add(u"CodeDbPath", TextProperty([=] { return g->CodeDbPath(); },
                                    [=](TextView folder) { return g->SetCodeDbPath(folder); }));
    add(u"CodeDb", Object(host, [=](const TestCall& c) -> Result<std::shared_ptr<hostmodel::Database>> {
            if (c.IsPut()) {
                throw CallFails{DISP_E_MEMBERNOTFOUND};
            }
            return g->CodeDb();
        }));
    return MakeTestObject("Globals", std::move(host), std::move(members));
}

}  // namespace lintara::support
