#include "cli/project/component_kind.h"

namespace lintara::cli {

std::string_view KindWord(hostmodel::ComponentType type) {
    using enum hostmodel::ComponentType;
    switch (type) {
        case Module:
            return "module";
        case Class:
            return "class";
        case OfficeForm:
            return "office form";
        case Form:
            return "form";
        case MDIForm:
            return "MDI form";
        case PropertyPage:
            return "property page";
        case UserControl:
            return "user control";
        case UserDocument:
            return "user document";
        case Designer:
            return "designer";
    }
    return "component";
}

}  // namespace lintara::cli
