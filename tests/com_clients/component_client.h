// A client of the component server: calls the members of a `Lintara` object with typed variables, as a host
// does. How, is the client's kind: by the interface of the type library, or by name.
#pragma once

#include "base/text.h"
#include "com/com_ptr.h"

#include <cstdint>
#include <memory>
#include <oaidl.h>

namespace lintara::support {

class ComponentClient {
  public:
    virtual ~ComponentClient() = default;

    virtual void SetServices(IDispatch* services) = 0;

    virtual Text ParsePseudoCode(TextView pseudoCode) = 0;
    virtual Text ParsePseudoCodeEx(TextView pseudoCode, TextView component, TextView member) = 0;
    virtual Text GeneratePseudoCode(TextView code) = 0;
    virtual Text GetMemberName() = 0;
    virtual Text GetMemberType() = 0;
    virtual Text GetMemberTypeEx(TextView component, TextView member) = 0;
    virtual Text GetTextSelection(Text& lines, std::int32_t startLine, std::int32_t endLine,
                                  std::int32_t startColumn, std::int32_t endColumn) = 0;
    virtual Text InsertTextInLine(TextView line, TextView text, std::int32_t column) = 0;
    virtual void TranslateCarret(std::int32_t& line, std::int32_t& column, TextView text) = 0;
    virtual void LineNumbersInserter(TextView project, TextView component, TextView member, std::int32_t base,
                                     std::int32_t step) = 0;
    virtual void LineNumbersRemover(TextView project, TextView component, TextView member) = 0;
    virtual void ErrorHandlerInserter(TextView project, TextView component, TextView member, TextView label,
                                      TextView code) = 0;
    virtual void ErrorHandlerRemover(TextView project, TextView component, TextView member) = 0;
    virtual bool SearchAndReplace(TextView component, TextView sought, TextView replacement,
                                  std::int32_t startLine, std::int32_t endLine, bool wholeWord,
                                  bool goThroughDelete) = 0;
    virtual void CustomCodeInserter(TextView project, TextView component, TextView member, TextView code,
                                    bool noDelimiters, std::int16_t where, std::int32_t line,
                                    std::int16_t id) = 0;
    virtual void CustomCodeRemover(TextView project, TextView component, TextView member,
                                   std::int16_t id) = 0;
    virtual std::int32_t GetLineNumber() = 0;
};

// A client with a new object. Each test program has one kind.
[[nodiscard]] std::unique_ptr<ComponentClient> MakeComponentClient();

// What every call must have returned; anything else ends the test program with a message.
void MustSucceed(HRESULT code, const char* member);

}  // namespace lintara::support
