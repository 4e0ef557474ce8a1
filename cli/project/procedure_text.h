// The lines of the procedures that one call of the library edits, as they were before it. The buffer is used
// for one group after the other, so that reading allocates nothing once it has grown.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "cli/scope/procedure_groups.h"
#include "workspace/module.h"

#include <cstddef>
#include <span>
#include <vector>

namespace lintara::cli {

class ProcedureText {
  public:
    // One procedure, or one range.
    struct Part {
        LineRange lines;  // header and closing line included
        LineRange body;
        std::size_t begin = 0;  // where `lines` begin in the buffer
    };

    void Read(const workspace::Module& module, const ProcedureGroup& group);
    // Each range becomes a part of body lines only. What lies outside the module is left out.
    void Read(const workspace::Module& module, std::span<const LineRange> ranges);

    [[nodiscard]] const std::vector<Part>& parts() const { return parts_; }
    [[nodiscard]] std::span<const Text> lines(const Part& part) const;
    [[nodiscard]] std::span<const Text> body(const Part& part) const;

    // Gives lines of the module that differ now the text back that they had; the whole body, or one line of
    // it by its index. True when there were any.
    bool PutBack(workspace::Module& module, const Part& part) const;
    bool PutBack(workspace::Module& module, const Part& part, std::size_t index) const;
    bool PutBackAll(workspace::Module& module) const;

    // Whether any line of a body is another one in the module now.
    [[nodiscard]] bool Differs(const workspace::Module& module) const;

  private:
    void Append(const workspace::Module& module, LineRange lines, LineRange body);

    std::vector<Text> buffer_;  // only grows; the first `used_` are valid
    std::size_t used_ = 0;
    std::vector<Part> parts_;
    mutable Text current_;
};

}  // namespace lintara::cli
