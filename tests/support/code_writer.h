// Writes made-up BASIC code line by line, to a given number of lines. Used by project_generator.
#pragma once

#include "tests/support/random.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace lintara::support {

class CodeWriter {
  public:
    explicit CodeWriter(std::uint64_t seed) : random_(seed) {}

    // Each writes exactly as many lines as it is told to, or as it says.
    void ModuleHead(std::string_view name);                   // 1 line
    void ClassHead(std::string_view name);                    // 14 lines
    void FormHead(std::string_view name, std::size_t lines);  // at least 40 lines
    void Declarations(std::size_t lines);
    // Declarations, then procedures, in `lines` lines in all. A hidden attribute line is none of them.
    void Code(std::size_t lines, std::size_t procedures, double propertyShare);

    [[nodiscard]] std::string Take() { return std::move(bytes_); }

  private:
    void Line(std::size_t depth, std::string_view text);
    void Control(std::size_t lines);
    void Procedure(std::string_view header, std::string_view kind, std::size_t lines);
    void PropertyPair(std::size_t lines);
    void SubOrFunction(std::size_t lines);
    void Body(std::size_t depth, std::size_t lines);
    std::size_t Block(std::size_t depth, std::size_t lines);
    void IfBlock(std::size_t depth, std::size_t lines);
    void Loop(std::size_t depth, std::size_t lines);
    void SelectBlock(std::size_t depth, std::size_t lines);
    void ContinuedCall(std::size_t depth, std::size_t lines);
    void Single(std::size_t depth);

    [[nodiscard]] std::string Noun();
    [[nodiscard]] std::string Variable();
    [[nodiscard]] std::string Number();
    [[nodiscard]] std::string Condition();
    [[nodiscard]] std::string Comment();
    [[nodiscard]] std::string Statement();
    [[nodiscard]] std::string Parameters();
    // A name that no other procedure of this module has.
    [[nodiscard]] std::string NewName(std::string_view verb);

    Random random_;
    std::string bytes_;
    std::size_t names_ = 0;
    std::size_t controls_ = 0;
};

}  // namespace lintara::support
