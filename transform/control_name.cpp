#include "transform/control_name.h"

#include "base/result.h"
#include "base/statement.h"
#include "hostmodel/dispatch.h"
#include "hostmodel/member_kind.h"
#include "hostmodel/vbe.h"
#include "transform/host_value.h"
#include "transform/member_queries.h"
#include "transform/walks.h"

#include <cstdint>
#include <memory>
#include <span>

namespace lintara::transform {
namespace {

using hostmodel::ComponentType;
using hostmodel::Value;
using DispatchPtr = std::shared_ptr<hostmodel::Dispatch>;

Result<Value> Read(const Result<DispatchPtr>& object, TextView name, std::span<const Value> arguments = {}) {
    return Then(object, [&](const DispatchPtr& present) { return present->Invoke(name, arguments); });
}

Result<DispatchPtr> ControlsOf(const Result<VBComponentPtr>& component) {
    const auto designer =
        Then(component, [](const VBComponentPtr& found) { return Then(found->Designer(), AsObject); });
    return Then(Read(designer, u"VBControls"), AsObject);
}

// The class name of the control of that name; fails when there is none.
Result<Text> ClassNameOf(const Result<DispatchPtr>& controls, const Text& controlName) {
    const Value key = controlName;
    const auto control = Then(Read(controls, u"", std::span(&key, 1)), AsObject);
    return Then(Read(control, u"ClassName"), AsText);
}

// What the names of an object's own event procedures begin with; "" for the types that have no such word.
TextView KindWord(ComponentType type) {
    switch (type) {
        case ComponentType::Class:
            return u"Class";
        case ComponentType::Form:
            return u"Form";
        case ComponentType::MDIForm:
            return u"MDIForm";
        case ComponentType::PropertyPage:
            return u"PropertyPage";
        case ComponentType::UserControl:
            return u"UserControl";
        case ComponentType::UserDocument:
            return u"UserDocument";
        case ComponentType::Module:
        case ComponentType::OfficeForm:
        case ComponentType::Designer:
            break;
    }
    return u"";
}

// The part of an event procedure's name that names its object.
Text PrefixOf(hostmodel::Globals& globals, TextView memberName) {
    Text prefix;
    Assign(prefix, globals.TokenBefore(memberName, u"_"));
    return prefix;
}

// Whether `component` has a control of that name, or is itself called so by its own event procedures.
bool HasObject(const Result<VBComponentPtr>& component, const Text& name) {
    constexpr std::int32_t NoDesigner = -1;
    const Result<DispatchPtr> controls = ControlsOf(component);
    std::int32_t count = NoDesigner;
    Assign(count, Then(Read(controls, u"Count"), AsNumber));
    if (count == NoDesigner) {
        return false;
    }
    Text className;
    Assign(className, ClassNameOf(controls, name));
    if (!className.empty()) {
        return true;
    }
    TextView kindWord;
    Assign(kindWord,
           Then((*component)->Type(), [](ComponentType type) -> Result<TextView> { return KindWord(type); }));
    return name == kindWord;
}

}  // namespace

Text ControlNameOf(hostmodel::Globals& globals, TextView componentName, TextView memberName) {
    Text prefix = PrefixOf(globals, memberName);
    if (prefix.empty() || !HasObject(ComponentInActiveProject(globals, componentName), prefix)) {
        return {};
    }
    return prefix;
}

Text ActiveControlName(hostmodel::Globals& globals) {
    Text prefix = PrefixOf(globals, GetMemberName(globals));
    if (prefix.empty() || !HasObject(ActiveComponent(globals), prefix)) {
        return {};
    }
    return prefix;
}

}  // namespace lintara::transform
