#include "transform/templates.h"

#include "base/constants.h"
#include "base/result.h"
#include "base/statement.h"
#include "base/text_scan.h"
#include "hostmodel/vbe.h"
#include "transform/control_name.h"
#include "transform/member_queries.h"
#include "transform/walks.h"

#include <array>
#include <cstdint>
#include <optional>

namespace lintara::transform {
namespace {

bool HasActiveCodeWindow(hostmodel::Globals& globals) {
    constexpr std::int32_t NoWindow = -1;
    std::int32_t visibleLines = NoWindow;
    Assign(visibleLines, Then(ActiveCodePane(globals),
                              [](const CodePanePtr& pane) { return pane->CountOfVisibleLines(); }));
    return visibleLines != NoWindow;
}

Text ActiveProjectName(hostmodel::Globals& globals) {
    Text name;
    Assign(name, Then(ActiveProject(globals), [](const VBProjectPtr& project) { return project->Name(); }));
    return name;
}

Text ActiveComponentName(hostmodel::Globals& globals) {
    Text name;
    Assign(name,
           Then(ActiveComponent(globals), [](const VBComponentPtr& component) { return component->Name(); }));
    return name;
}

Text ComputerName(hostmodel::Globals& globals) {
    Text name;
    Assign(name, globals.ComputerName());
    return name;
}

Text UserName(hostmodel::Globals& globals) {
    Text name;
    Assign(name, globals.UserName());
    return name;
}

// The values of the placeholders at one place; "" for those that have none there.
class Values {
  public:
    Values(const TemplateSources& sources, TextView componentName, TextView memberName)
        : sources_(sources), componentName_(componentName), memberName_(memberName) {}

    [[nodiscard]] Text ProjectName() { return ActiveProjectName(sources_.globals); }
    [[nodiscard]] Text ComponentName() { return Text(componentName_); }
    [[nodiscard]] Text MemberName() { return Text(memberName_); }
    [[nodiscard]] Text ControlName() {
        const bool known = !componentName_.empty() && !memberName_.empty();
        return known ? ControlNameOf(sources_.globals, componentName_, memberName_) : Text();
    }
    [[nodiscard]] Text ComputerName() { return transform::ComputerName(sources_.globals); }
    [[nodiscard]] Text UserName() { return transform::UserName(sources_.globals); }
    [[nodiscard]] Text Date() { return Regional(&RegionalTexts::Date); }
    [[nodiscard]] Text Time() { return Regional(&RegionalTexts::Time); }
    [[nodiscard]] Text MemberType() {
        return Text(GetMemberTypeEx(sources_.globals, componentName_, memberName_));
    }

  private:
    [[nodiscard]] Text Regional(Result<Text> (RegionalTexts::*write)(const LocalTime&)) {
        Text text;
        if (const auto& now = Now(); now && sources_.regional != nullptr) {
            Assign(text, (sources_.regional->*write)(*now));
        }
        return text;
    }

    // Asks the clock once, so that date and time are those of one moment.
    [[nodiscard]] const std::optional<LocalTime>& Now() {
        if (!now_ && sources_.clock != nullptr) {
            Assign(now_, sources_.clock->Now());
        }
        return now_;
    }

    const TemplateSources& sources_;
    TextView componentName_;
    TextView memberName_;
    std::optional<LocalTime> now_;
};

struct Row {
    TextView placeholder;
    Text (Values::*value)();
};

// In the order of the replacements: a value that holds the placeholder of a later row is expanded further.
constexpr std::array Rows = {
    Row{constants::ProjectNamePlaceholder, &Values::ProjectName},
    Row{constants::ComponentNamePlaceholder, &Values::ComponentName},
    Row{constants::MemberNamePlaceholder, &Values::MemberName},
    Row{constants::ControlNamePlaceholder, &Values::ControlName},
    Row{constants::ComputerNamePlaceholder, &Values::ComputerName},
    Row{constants::UserNamePlaceholder, &Values::UserName},
    Row{constants::DatePlaceholder, &Values::Date},
    Row{constants::TimePlaceholder, &Values::Time},
    Row{constants::MemberTypePlaceholder, &Values::MemberType},
};

Text ExpandPlaceholders(const TemplateSources& sources, TextView pseudoCode, TextView componentName,
                        TextView memberName) {
    Values values(sources, componentName, memberName);
    Text code(pseudoCode);
    for (const Row& row : Rows) {
        // The host is not asked for a value that would replace nothing.
        if (FindExactly(code, row.placeholder) != Text::npos) {
            code = ReplaceAll(code, row.placeholder, (values.*row.value)());
        }
    }
    return code;
}

}  // namespace

Text ParsePseudoCode(const TemplateSources& sources, TextView pseudoCode) {
    hostmodel::Globals& globals = sources.globals;
    if (!HasActiveCodeWindow(globals)) {
        return Text(pseudoCode);
    }
    const Text componentName = ActiveComponentName(globals);
    const Text memberName = GetMemberName(globals);
    return ExpandPlaceholders(sources, pseudoCode, componentName, memberName);
}

Text ParsePseudoCodeEx(const TemplateSources& sources, TextView pseudoCode, TextView componentName,
                       TextView memberName) {
    return ExpandPlaceholders(sources, pseudoCode, componentName, memberName);
}

Text GeneratePseudoCode(const TemplateSources& sources, TextView code) {
    hostmodel::Globals& globals = sources.globals;
    Text pseudoCode(code);
    if (!HasActiveCodeWindow(globals)) {
        return pseudoCode;
    }
    const auto putBack = [&](TextView placeholder, TextView value) {
        pseudoCode = ReplaceAll(pseudoCode, value, placeholder);
    };
    putBack(constants::ProjectNamePlaceholder, ActiveProjectName(globals));
    putBack(constants::ComponentNamePlaceholder, ActiveComponentName(globals));
    putBack(constants::MemberNamePlaceholder, GetMemberName(globals));
    putBack(constants::ControlNamePlaceholder, ActiveControlName(globals));
    putBack(constants::ComputerNamePlaceholder, ComputerName(globals));
    putBack(constants::UserNamePlaceholder, UserName(globals));
    putBack(constants::MemberTypePlaceholder, GetMemberType(globals));
    return pseudoCode;
}

Text ReplaceAll(TextView text, TextView find, TextView replacement) {
    if (text.empty() || find.empty() || replacement.empty()) {
        return Text(text);
    }
    Text result;
    result.reserve(text.size() + replacement.size());
    std::size_t from = 0;
    for (std::size_t found = FindExactly(text, find); found != TextView::npos;
         found = FindExactly(text, find, from)) {
        result.append(text.substr(from, found - from)).append(replacement);
        from = found + find.size();
    }
    return result.append(text.substr(from));
}

}  // namespace lintara::transform
