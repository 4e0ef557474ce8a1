// The client that is compiled against the interfaces of the type library.
#include "com/bstr.h"
#include "com/lintara_idl.h"
#include "com/variant.h"
#include "tests/com/component_library.h"
#include "tests/com_clients/component_client.h"

namespace lintara::support {
namespace {

// A text variable, passed by reference.
class TextVariable {
  public:
    explicit TextVariable(TextView text) : text_(com::NewBstr(text)) {}
    ~TextVariable() { SysFreeString(text_); }
    TextVariable(const TextVariable&) = delete;
    TextVariable& operator=(const TextVariable&) = delete;

    BSTR* operator&() { return &text_; }
    operator BSTR() const { return text_; }
    [[nodiscard]] Text text() const { return Text(com::ViewOf(text_)); }

  private:
    BSTR text_;
};

class EarlyBoundClient final : public ComponentClient {
  public:
    explicit EarlyBoundClient(com::ComPtr<ILintara> lintara) : lintara_(std::move(lintara)) {}

    void SetServices(IDispatch* services) override { MustSucceed(lintara_->putref_oG(services), "oG"); }

    Text ParsePseudoCode(TextView pseudoCode) override {
        TextVariable a(pseudoCode);
        com::Bstr code;
        MustSucceed(lintara_->ParsePseudoCode(&a, code.Place()), "ParsePseudoCode");
        return Text(code.view());
    }
    Text ParsePseudoCodeEx(TextView pseudoCode, TextView component, TextView member) override {
        TextVariable a(pseudoCode);
        TextVariable b(component);
        TextVariable c(member);
        com::Bstr code;
        MustSucceed(lintara_->ParsePseudoCodeEx(&a, &b, &c, code.Place()), "ParsePseudoCodeEx");
        return Text(code.view());
    }
    Text GeneratePseudoCode(TextView code) override {
        TextVariable a(code);
        com::Bstr result;
        MustSucceed(lintara_->GeneratePseudoCode(&a, result.Place()), "GeneratePseudoCode");
        return Text(result.view());
    }
    Text GetMemberName() override {
        com::Bstr name;
        MustSucceed(lintara_->GetMemberName(name.Place()), "GetMemberName");
        return Text(name.view());
    }
    Text GetMemberType() override {
        com::Bstr type;
        MustSucceed(lintara_->GetMemberType(type.Place()), "GetMemberType");
        return Text(type.view());
    }
    Text GetMemberTypeEx(TextView component, TextView member) override {
        com::Bstr type;
        MustSucceed(lintara_->GetMemberTypeEx(TextVariable(component), TextVariable(member), type.Place()),
                    "GetMemberTypeEx");
        return Text(type.view());
    }
    Text GetTextSelection(Text& lines, std::int32_t startLine, std::int32_t endLine, std::int32_t startColumn,
                          std::int32_t endColumn) override {
        TextVariable a(lines);
        com::Bstr result;
        MustSucceed(
            lintara_->GetTextSelection(&a, startLine, endLine, startColumn, endColumn, result.Place()),
            "GetTextSelection");
        lines = a.text();
        return Text(result.view());
    }
    Text InsertTextInLine(TextView line, TextView text, std::int32_t column) override {
        com::Bstr result;
        MustSucceed(
            lintara_->InsertTextInLine(TextVariable(line), TextVariable(text), column, result.Place()),
            "InsertTextInLine");
        return Text(result.view());
    }
    void TranslateCarret(std::int32_t& line, std::int32_t& column, TextView text) override {
        LONG a = line;
        LONG b = column;
        MustSucceed(lintara_->TranslateCarret(&a, &b, TextVariable(text)), "TranslateCarret");
        line = static_cast<std::int32_t>(a);
        column = static_cast<std::int32_t>(b);
    }
    void LineNumbersInserter(TextView project, TextView component, TextView member, std::int32_t base,
                             std::int32_t step) override {
        Names names(project, component, member);
        LONG a = base;
        LONG b = step;
        MustSucceed(lintara_->LineNumbersInserter(&names.project, &names.component, &names.member, &a, &b),
                    "LineNumbersInserter");
    }
    void LineNumbersRemover(TextView project, TextView component, TextView member) override {
        Names names(project, component, member);
        MustSucceed(lintara_->LineNumbersRemover(&names.project, &names.component, &names.member),
                    "LineNumbersRemover");
    }
    void ErrorHandlerInserter(TextView project, TextView component, TextView member, TextView label,
                              TextView code) override {
        Names names(project, component, member);
        TextVariable a(label);
        TextVariable b(code);
        MustSucceed(lintara_->ErrorHandlerInserter(&names.project, &names.component, &names.member, &a, &b),
                    "ErrorHandlerInserter");
    }
    void ErrorHandlerRemover(TextView project, TextView component, TextView member) override {
        Names names(project, component, member);
        MustSucceed(lintara_->ErrorHandlerRemover(&names.project, &names.component, &names.member),
                    "ErrorHandlerRemover");
    }
    bool SearchAndReplace(TextView component, TextView sought, TextView replacement, std::int32_t startLine,
                          std::int32_t endLine, bool wholeWord, bool goThroughDelete) override {
        TextVariable a(component);
        TextVariable b(sought);
        TextVariable c(replacement);
        LONG first = startLine;
        LONG last = endLine;
        VARIANT_BOOL whole = com::VariantBool(wholeWord);
        VARIANT_BOOL through = com::VariantBool(goThroughDelete);
        VARIANT_BOOL found = VARIANT_FALSE;
        MustSucceed(lintara_->SearchAndReplace(&a, &b, &c, &first, &last, &whole, &through, &found),
                    "SearchAndReplace");
        return found != VARIANT_FALSE;
    }
    void CustomCodeInserter(TextView project, TextView component, TextView member, TextView code,
                            bool noDelimiters, std::int16_t where, std::int32_t line,
                            std::int16_t id) override {
        Names names(project, component, member);
        TextVariable a(code);
        VARIANT_BOOL b = com::VariantBool(noDelimiters);
        SHORT c = where;
        LONG d = line;
        SHORT e = id;
        MustSucceed(
            lintara_->CustomCodeInserter(&names.project, &names.component, &names.member, &a, &b, &c, &d, &e),
            "CustomCodeInserter");
    }
    void CustomCodeRemover(TextView project, TextView component, TextView member, std::int16_t id) override {
        Names names(project, component, member);
        SHORT a = id;
        MustSucceed(lintara_->CustomCodeRemover(&names.project, &names.component, &names.member, &a),
                    "CustomCodeRemover");
    }
    std::int32_t GetLineNumber() override {
        LONG line = -1;
        MustSucceed(lintara_->GetLineNumber(&line), "GetLineNumber");
        return static_cast<std::int32_t>(line);
    }

  private:
    struct Names {
        Names(TextView p, TextView c, TextView m) : project(p), component(c), member(m) {}
        TextVariable project;
        TextVariable component;
        TextVariable member;
    };

    com::ComPtr<ILintara> lintara_;
};

}  // namespace

std::unique_ptr<ComponentClient> MakeComponentClient() {
    static const ComponentLibrary library;
    return std::make_unique<EarlyBoundClient>(library.Create<ILintara>(CLSID_Lintara));
}

}  // namespace lintara::support
