// The client that calls by name, with references to typed variables, as the language calls a variable that is
// declared as Object.
#include "base/utf8.h"
#include "com/bstr.h"
#include "com/lintara_idl.h"
#include "com/variant.h"
#include "tests/com/component_library.h"
#include "tests/com_clients/component_client.h"

#include <deque>
#include <string>
#include <vector>

namespace lintara::support {
namespace {

// One call: variables, and references to them in reverse.
class NamedCall {
  public:
    NamedCall& Refer(TextView text) { return Refer(com::Variant(text)); }
    NamedCall& Refer(std::int32_t number) { return Refer(com::Variant(number)); }
    NamedCall& Refer(std::same_as<bool> auto value) { return Refer(com::Variant(value)); }
    NamedCall& Refer(std::int16_t number) {
        com::Variant variable;
        variable.get().vt = VT_I2;
        variable.get().iVal = number;
        return Refer(std::move(variable));
    }

    com::Variant Invoke(IDispatch& object, const wchar_t* member, WORD kind) {
        auto* name = const_cast<LPOLESTR>(member);
        DISPID id = DISPID_UNKNOWN;
        const std::string shown(member, member + std::char_traits<wchar_t>::length(member));
        MustSucceed(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), shown.c_str());
        std::vector<VARIANTARG> reversed;
        for (auto variable = variables_.rbegin(); variable != variables_.rend(); ++variable) {
            VARIANTARG reference;
            VariantInit(&reference);
            reference.vt = static_cast<VARTYPE>(variable->get().vt | VT_BYREF);
            reference.byref = &variable->get().lVal;
            reversed.push_back(reference);
        }
        DISPID value = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{};
        parameters.rgvarg = reversed.data();
        parameters.cArgs = static_cast<UINT>(reversed.size());
        if ((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
            parameters.rgdispidNamedArgs = &value;
            parameters.cNamedArgs = 1;
        }
        com::Variant result;
        EXCEPINFO exception{};
        UINT wrong = 0;
        MustSucceed(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result.Place(),
                                  &exception, &wrong),
                    shown.c_str());
        return result;
    }

    [[nodiscard]] const VARIANT& variable(std::size_t place) const { return variables_[place].get(); }

    NamedCall& Refer(com::Variant variable) {
        variables_.push_back(std::move(variable));
        return *this;
    }

  private:
    std::deque<com::Variant> variables_;
};

class LateBoundClient final : public ComponentClient {
  public:
    explicit LateBoundClient(com::ComPtr<IDispatch> lintara) : lintara_(std::move(lintara)) {}

    void SetServices(IDispatch* services) override {
        NamedCall call;
        call.Refer(com::Variant(services));
        (void)call.Invoke(*lintara_, L"oG", DISPATCH_PROPERTYPUTREF);
    }

    Text ParsePseudoCode(TextView pseudoCode) override { return AskText(L"ParsePseudoCode", pseudoCode); }
    Text ParsePseudoCodeEx(TextView pseudoCode, TextView component, TextView member) override {
        return AskText(L"ParsePseudoCodeEx", pseudoCode, component, member);
    }
    Text GeneratePseudoCode(TextView code) override { return AskText(L"GeneratePseudoCode", code); }
    Text GetMemberName() override { return AskText(L"GetMemberName"); }
    Text GetMemberType() override { return AskText(L"GetMemberType"); }
    Text GetMemberTypeEx(TextView component, TextView member) override {
        return AskText(L"GetMemberTypeEx", component, member);
    }
    Text GetTextSelection(Text& lines, std::int32_t startLine, std::int32_t endLine, std::int32_t startColumn,
                          std::int32_t endColumn) override {
        NamedCall call;
        call.Refer(TextView(lines)).Refer(startLine).Refer(endLine).Refer(startColumn).Refer(endColumn);
        const Text selection = TextOf(call.Invoke(*lintara_, L"GetTextSelection", Function));
        lines = Text(com::ViewOf(call.variable(0).bstrVal));
        return selection;
    }
    Text InsertTextInLine(TextView line, TextView text, std::int32_t column) override {
        return AskText(L"InsertTextInLine", line, text, column);
    }
    void TranslateCarret(std::int32_t& line, std::int32_t& column, TextView text) override {
        NamedCall call;
        call.Refer(line).Refer(column).Refer(text);
        (void)call.Invoke(*lintara_, L"TranslateCarret", DISPATCH_METHOD);
        line = static_cast<std::int32_t>(call.variable(0).lVal);
        column = static_cast<std::int32_t>(call.variable(1).lVal);
    }
    void LineNumbersInserter(TextView project, TextView component, TextView member, std::int32_t base,
                             std::int32_t step) override {
        Do(L"LineNumbersInserter", project, component, member, base, step);
    }
    void LineNumbersRemover(TextView project, TextView component, TextView member) override {
        Do(L"LineNumbersRemover", project, component, member);
    }
    void ErrorHandlerInserter(TextView project, TextView component, TextView member, TextView label,
                              TextView code) override {
        Do(L"ErrorHandlerInserter", project, component, member, label, code);
    }
    void ErrorHandlerRemover(TextView project, TextView component, TextView member) override {
        Do(L"ErrorHandlerRemover", project, component, member);
    }
    bool SearchAndReplace(TextView component, TextView sought, TextView replacement, std::int32_t startLine,
                          std::int32_t endLine, bool wholeWord, bool goThroughDelete) override {
        NamedCall call;
        call.Refer(component).Refer(sought).Refer(replacement).Refer(startLine).Refer(endLine);
        call.Refer(wholeWord).Refer(goThroughDelete).Refer(false);
        (void)call.Invoke(*lintara_, L"SearchAndReplace", DISPATCH_METHOD);
        return call.variable(7).boolVal != VARIANT_FALSE;
    }
    void CustomCodeInserter(TextView project, TextView component, TextView member, TextView code,
                            bool noDelimiters, std::int16_t where, std::int32_t line,
                            std::int16_t id) override {
        Do(L"CustomCodeInserter", project, component, member, code, noDelimiters, where, line, id);
    }
    void CustomCodeRemover(TextView project, TextView component, TextView member, std::int16_t id) override {
        Do(L"CustomCodeRemover", project, component, member, id);
    }
    std::int32_t GetLineNumber() override {
        NamedCall call;
        const com::Variant line = call.Invoke(*lintara_, L"GetLineNumber", Function);
        return line.get().vt == VT_I4 ? static_cast<std::int32_t>(line.get().lVal) : -1;
    }

  private:
    static constexpr WORD Function = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

    static Text TextOf(const com::Variant& value) {
        return value.get().vt == VT_BSTR ? Text(com::ViewOf(value.get().bstrVal)) : Text(u"(no text)");
    }
    template <class... Values>
    Text AskText(const wchar_t* member, const Values&... values) {
        NamedCall call;
        (call.Refer(values), ...);
        return TextOf(call.Invoke(*lintara_, member, Function));
    }
    template <class... Values>
    void Do(const wchar_t* member, const Values&... values) {
        NamedCall call;
        (call.Refer(values), ...);
        (void)call.Invoke(*lintara_, member, DISPATCH_METHOD);
    }

    com::ComPtr<IDispatch> lintara_;
};

}  // namespace

std::unique_ptr<ComponentClient> MakeComponentClient() {
    static const ComponentLibrary library;
    return std::make_unique<LateBoundClient>(library.Create<IDispatch>(CLSID_Lintara));
}

}  // namespace lintara::support
