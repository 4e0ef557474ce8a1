#include "cli/serve/method.h"

#include <iterator>
#include <unordered_map>
#include <utility>

namespace lintara::cli {
namespace {

std::vector<MethodInfo> AllMethods() {
    std::vector<MethodInfo> all;
    for (auto family :
         {WorkspaceMethods, IdeMethods, SettingsMethods, CodeModuleMethods, InspectMethods, LintaraMethods}) {
        std::vector<MethodInfo> methods = family();
        all.insert(all.end(), std::move_iterator(methods.begin()), std::move_iterator(methods.end()));
    }
    return all;
}

}  // namespace

const std::vector<MethodInfo>& Methods() {
    static const std::vector<MethodInfo> methods = AllMethods();
    return methods;
}

const MethodInfo* FindMethod(std::string_view name) {
    static const auto byName = [] {
        std::unordered_map<std::string_view, const MethodInfo*> names;
        for (const MethodInfo& method : Methods()) {
            names.emplace(method.name, &method);
        }
        return names;
    }();
    const auto found = byName.find(name);
    return found == byName.end() ? nullptr : found->second;
}

Json ValueResult(Json value) {
    Json result = Json::object();
    result["value"] = std::move(value);
    return result;
}

}  // namespace lintara::cli
