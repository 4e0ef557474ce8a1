// The public operations of the library, done by the component server: each makes a `Lintara` object of the
// loaded library, hands it a late-bound host over the services object that the test has made, calls the
// member and lets both go. These definitions stand in for those of transform/, so that the tests of the
// transformers and of the facade, with all their tables, run through COM as they are.
#include "platform/registry_settings.h"
#include "tests/com/late_bound_host.h"
#include "tests/com_clients/component_client.h"
#include "tests/com_clients/registry_sandbox.h"
#include "transform/custom_code.h"
#include "transform/error_handler_insertion.h"
#include "transform/error_handler_removal.h"
#include "transform/line_numbers.h"
#include "transform/member_queries.h"
#include "transform/search_and_replace.h"
#include "transform/templates.h"
#include "transform/text_selection.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace lintara {
namespace support {
namespace {

// Each host takes references in the other way than the one before it.
LateBoundHost::References NextStyle() {
    static bool typed = false;
    typed = !typed;
    return typed ? LateBoundHost::References::Typed : LateBoundHost::References::Variants;
}

// A `Lintara` object with a host, for one call.
template <class Use>
auto WithServices(hostmodel::Globals& globals, Use&& use) {
    struct Session {
        explicit Session(hostmodel::Globals& services) {
            host->references = NextStyle();
            client->SetServices(LateBoundGlobals(services, host).get());
        }
        // The services object goes with the client that held it, and then no object is left.
        ~Session() {
            if (host->liveObjects != 1) {
                std::fputs("the component server keeps objects of the host beyond a call\n", stderr);
                std::abort();
            }
            client = nullptr;
            if (host->liveObjects != 0) {
                std::fputs("the component server keeps the services object\n", stderr);
                std::abort();
            }
        }
        LateBoundHostPtr host = std::make_shared<LateBoundHost>();
        std::unique_ptr<ComponentClient> client = MakeComponentClient();
    };
    Session session(globals);
    return use(*session.client);
}

// The language's own words for a kind of member: views that outlive every call.
TextView Lasting(const Text& kind) {
    static constexpr std::array<TextView, 5> Kinds = {u"", u"Sub", u"Function", u"Property", u"?"};
    for (const TextView known : Kinds) {
        if (known == kind) {
            return known;
        }
    }
    return u"(an unknown kind)";
}

}  // namespace

void MustSucceed(HRESULT code, const char* member) {
    if (code != S_OK) {
        std::fprintf(stderr, "%s returned 0x%08lX\n", member, static_cast<unsigned long>(code));
        std::abort();
    }
}

}  // namespace support

namespace transform {

using support::ComponentClient;
using support::WithServices;

Text ParsePseudoCode(const TemplateSources& sources, TextView pseudoCode) {
    return WithServices(sources.globals,
                        [&](ComponentClient& client) { return client.ParsePseudoCode(pseudoCode); });
}

Text ParsePseudoCodeEx(const TemplateSources& sources, TextView pseudoCode, TextView componentName,
                       TextView memberName) {
    return WithServices(sources.globals, [&](ComponentClient& client) {
        return client.ParsePseudoCodeEx(pseudoCode, componentName, memberName);
    });
}

Text GeneratePseudoCode(const TemplateSources& sources, TextView code) {
    return WithServices(sources.globals,
                        [&](ComponentClient& client) { return client.GeneratePseudoCode(code); });
}

std::int32_t GetLineNumber(hostmodel::Globals& globals) {
    return WithServices(globals, [](ComponentClient& client) { return client.GetLineNumber(); });
}

Text GetMemberName(hostmodel::Globals& globals) {
    return WithServices(globals, [](ComponentClient& client) { return client.GetMemberName(); });
}

TextView GetMemberType(hostmodel::Globals& globals) {
    return support::Lasting(
        WithServices(globals, [](ComponentClient& client) { return client.GetMemberType(); }));
}

TextView GetMemberTypeEx(hostmodel::Globals& globals, TextView componentName, TextView memberName) {
    return support::Lasting(WithServices(
        globals, [&](ComponentClient& client) { return client.GetMemberTypeEx(componentName, memberName); }));
}

Text GetTextSelection(Text& lines, std::int32_t startLine, std::int32_t endLine, std::int32_t startColumn,
                      std::int32_t endColumn) {
    return support::MakeComponentClient()->GetTextSelection(lines, startLine, endLine, startColumn,
                                                            endColumn);
}

Text InsertTextInLine(TextView line, TextView text, std::int32_t column) {
    return support::MakeComponentClient()->InsertTextInLine(line, text, column);
}

void TranslateCarret(std::int32_t& line, std::int32_t& column, TextView text) {
    support::MakeComponentClient()->TranslateCarret(line, column, text);
}

void LineNumbersInserter(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                         TextView procedureName, std::int32_t base, std::int32_t step) {
    WithServices(globals, [&](ComponentClient& client) {
        client.LineNumbersInserter(projectName, componentName, procedureName, base, step);
    });
}

void LineNumbersRemover(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                        TextView procedureName) {
    WithServices(globals, [&](ComponentClient& client) {
        client.LineNumbersRemover(projectName, componentName, procedureName);
    });
}

void ErrorHandlerInserter(const TemplateSources& sources, TextView projectName, TextView componentName,
                          TextView procedureName, TextView label, TextView code) {
    WithServices(sources.globals, [&](ComponentClient& client) {
        client.ErrorHandlerInserter(projectName, componentName, procedureName, label, code);
    });
}

void ErrorHandlerRemover(hostmodel::Globals& globals, SettingsStore* settings, TextView projectName,
                         TextView componentName, TextView procedureName) {
    const support::SettingsInRegistry inRegistry(settings);
    WithServices(globals, [&](ComponentClient& client) {
        client.ErrorHandlerRemover(projectName, componentName, procedureName);
    });
}

void SearchAndReplace(hostmodel::Globals& globals, TextView componentName, TextView sought,
                      TextView replacement, Line startLine, Line endLine, ReplaceOptions options,
                      bool& foundAny) {
    foundAny = WithServices(globals, [&](ComponentClient& client) {
        return client.SearchAndReplace(componentName, sought, replacement, startLine.value(), endLine.value(),
                                       options.wholeWord, options.goThroughDelete);
    });
}

void CustomCodeInserter(const TemplateSources& sources, TextView projectName, TextView componentName,
                        TextView procedureName, const CustomCode& block) {
    WithServices(sources.globals, [&](ComponentClient& client) {
        client.CustomCodeInserter(projectName, componentName, procedureName, block.code, block.noDelimiters,
                                  static_cast<std::int16_t>(block.place), block.line, block.id);
    });
}

void CustomCodeRemover(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                       TextView procedureName, std::int16_t id) {
    WithServices(globals, [&](ComponentClient& client) {
        client.CustomCodeRemover(projectName, componentName, procedureName, id);
    });
}

}  // namespace transform
}  // namespace lintara
