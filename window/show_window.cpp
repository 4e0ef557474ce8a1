#include "window/show_window.h"

#include "base/utf8.h"
#include "dialogs/dialogs_lt.h"
#include "history/show_history.h"
#include "window/recorded_history.h"

#include <array>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include <nlohmann/json.hpp>

namespace lintara::window {
namespace {

using nlohmann::json;

// What is wrong with a request. Never leaves this file.
struct BadRequest : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The members of a request, each to be read once: what is left in the end has no meaning.
class Members {
  public:
    explicit Members(json object) : object_(std::move(object)) {}

    Text TakeText(const char* name, TextView absent = u"") {
        const json value = Take(name);
        Check(value.is_null() || value.is_string(), name, "a text");
        return value.is_null() ? Text(absent) : FromUtf8(value.get_ref<const std::string&>());
    }

    bool TakeBool(const char* name) {
        const json value = Take(name);
        Check(value.is_null() || value.is_boolean(), name, "true or false");
        return value == true;
    }

    template <class Number>
    Number TakeNumber(const char* name) {
        const json value = Take(name);
        if (value.is_null()) {
            return 0;
        }
        const bool isSmall =
            value.is_number_unsigned()
                ? std::in_range<Number>(value.get<std::uint64_t>())
                : value.is_number_integer() && std::in_range<Number>(value.get<std::int64_t>());
        Check(isSmall, name, "a whole number of " + std::to_string(8 * sizeof(Number)) + " bits");
        return value.get<Number>();
    }

    RecordedHistory::Entries TakeEntries(const char* name) {
        RecordedHistory::Entries entries;
        const json value = Take(name);
        Check(value.is_null() || (value.is_array() && value.size() <= entries.size()), name,
              "a list of " + std::to_string(entries.size()) + " texts at most");
        for (std::size_t i = 0; i < value.size(); ++i) {
            Check(value[i].is_string(), name, "a list of texts");
            entries[i] = FromUtf8(value[i].get_ref<const std::string&>());
        }
        return entries;
    }

    void CheckNoneIsLeft() const {
        if (!object_.empty()) {
            throw BadRequest(json(object_.begin().key()).dump() + " is not known here");
        }
    }

  private:
    json Take(const char* name) {
        const auto found = object_.find(name);
        if (found == object_.end()) {
            return {};
        }
        json value = std::move(*found);
        object_.erase(found);
        return value;
    }

    static void Check(bool isGood, const char* name, const std::string& wanted) {
        if (!isGood) {
            throw BadRequest("\"" + std::string(name) + "\" must be " + wanted);
        }
    }

    json object_;
};

json InsertHandlers(Members& members, const dialogs::DialogHost& host) {
    dialogs::InsertEHParameters parameters;
    parameters.iLenGetMemberName = members.TakeNumber<std::int16_t>("iLenGetMemberName");
    parameters.iGetLineNumber = members.TakeNumber<std::int32_t>("iGetLineNumber");
    parameters.sCCPBuffer = members.TakeText("sCCPBuffer");
    members.CheckNoneIsLeft();
    if (!DialogsLT(host).GetInsertEHParameters(parameters)) {
        return {{"accepted", false}};
    }
    json answer{{"accepted", true},
                {"Scope", parameters.Scope},
                {"InsertEH", parameters.InsertEH},
                {"InsertLN", parameters.InsertLN}};
    if (parameters.InsertEH) {
        answer["EHLabel"] = ToUtf8(parameters.EHLabel);
        answer["EHCode"] = ToUtf8(parameters.EHCode);
        answer["sCCPBuffer"] = ToUtf8(parameters.sCCPBuffer);
    }
    if (parameters.InsertLN) {
        answer["LNBase"] = ToUtf8(parameters.LNBase);
        answer["LNStep"] = ToUtf8(parameters.LNStep);
    }
    return answer;
}

json RemoveHandlers(Members& members, const dialogs::DialogHost& host) {
    dialogs::RemoveEHParameters parameters;
    parameters.iLenGetMemberName = members.TakeNumber<std::int16_t>("iLenGetMemberName");
    parameters.iGetLineNumber = members.TakeNumber<std::int32_t>("iGetLineNumber");
    members.CheckNoneIsLeft();
    if (!DialogsLT(host).GetRemoveEHParameters(parameters)) {
        return {{"accepted", false}};
    }
    return {{"accepted", true},
            {"Scope", parameters.Scope},
            {"RemoveEH", parameters.RemoveEH},
            {"RemoveLN", parameters.RemoveLN}};
}

json InsertCode(Members& members, const dialogs::DialogHost& host) {
    dialogs::InsertCCParameters parameters;
    parameters.TextToInsert = members.TakeText("TextToInsert");
    parameters.ProcAvailable = members.TakeBool("ProcAvailable");
    parameters.ComponentAvailable = members.TakeNumber<std::int32_t>("ComponentAvailable");
    members.CheckNoneIsLeft();
    if (!DialogsLT(host).GetInsertCCParameters(parameters)) {
        return {{"accepted", false}};
    }
    return {{"accepted", true},
            {"Scope", parameters.Scope},
            {"TextToInsert", ToUtf8(parameters.TextToInsert)},
            {"NoDelimiters", parameters.NoDelimiters},
            {"WhereToInsert", parameters.WhereToInsert},
            {"LineToInsert", parameters.LineToInsert},
            {"ID", parameters.ID},
            {"sCCPBufferX", ToUtf8(parameters.sCCPBufferX)}};
}

json RemoveCode(Members& members, const dialogs::DialogHost& host) {
    dialogs::RemoveCCParameters parameters;
    parameters.ProcAvailable = members.TakeBool("ProcAvailable");
    parameters.ComponentAvailable = members.TakeNumber<std::int32_t>("ComponentAvailable");
    members.CheckNoneIsLeft();
    if (!DialogsLT(host).GetRemoveCCParameters(parameters)) {
        return {{"accepted", false}};
    }
    return {{"accepted", true}, {"Scope", parameters.Scope}, {"ID", parameters.ID}};
}

json ShowHistory(Members& members, const dialogs::DialogHost& host) {
    RecordedHistory::Contents contents;
    contents.back = members.TakeEntries("HistBackItem");
    contents.next = members.TakeEntries("HistNextItem");
    contents.separator = members.TakeText("HistSeparator", u"|");
    contents.currentKey = members.TakeText("HistCurrentKey");
    members.CheckNoneIsLeft();
    RecordedHistory globals(std::move(contents), host.placement);
    history::ShowHistoryWindow(globals, host.toolkit);
    if (globals.chosenKey().empty()) {
        return {{"accepted", false}};
    }
    return {{"accepted", true},
            {"HistSelKey", ToUtf8(globals.chosenKey())},
            {"HistSelObject", ToUtf8(globals.chosenObject())}};
}

struct Window {
    TextView name;
    json (*show)(Members&, const dialogs::DialogHost&);
};

constexpr std::array windows{Window{u"insert-eh", InsertHandlers}, Window{u"remove-eh", RemoveHandlers},
                             Window{u"insert-code", InsertCode}, Window{u"remove-code", RemoveCode},
                             Window{u"history", ShowHistory}};

json Answer(std::string_view request, const dialogs::DialogHost& host) {
    json object = json::parse(request);
    if (!object.is_object()) {
        throw BadRequest("it must be an object");
    }
    Members members(std::move(object));
    const Text name = members.TakeText("window");
    for (const Window& window : windows) {
        if (window.name == name) {
            return window.show(members, host);
        }
    }
    throw BadRequest("\"window\" must be one of insert-eh, remove-eh, insert-code, remove-code, history");
}

}  // namespace

std::expected<std::string, std::string> ShowWindow(std::string_view request,
                                                   const dialogs::DialogHost& host) {
    try {
        return Answer(request, host).dump();
    } catch (const BadRequest& error) {
        return std::unexpected(std::string("the request cannot be used: ") + error.what());
    } catch (const json::exception& error) {
        return std::unexpected(std::string("the request is not JSON: ") + error.what());
    }
}

}  // namespace lintara::window
