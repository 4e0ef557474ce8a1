// Insertion of a block of the user's own code into procedures that leaves them what they were around it.
#pragma once

#include "cli/edits/procedure_edit.h"
#include "cli/guards/custom_code_markers.h"
#include "cli/project/procedure_text.h"
#include "transform/custom_code.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

struct CustomCodeOptions {
    Text code;  // a template; CR LF separates its lines
    bool noMarkers = false;
    transform::CodePlace where = transform::CodePlace::AfterFirstLine;
    std::int32_t line = 1;  // of the body, for CodePlace::AtLine
    std::int16_t id = 0;
};

// How marker lines write the number.
[[nodiscard]] Text MarkerNumber(std::int16_t id);

class CustomCodeInsertion : public ProcedureEdit {
  public:
    explicit CustomCodeInsertion(CustomCodeOptions block);

    // A property gets the block into each of its procedures, or into none.
    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool ApplyExactly(const EditTarget& target, const ProcedureGroup& group) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override;

  private:
    using Part = ProcedureText::Part;

    void Insert(const EditTarget& target, const ProcedureGroup& group) const;
    [[nodiscard]] std::optional<Skip> Check(const EditTarget& target, const ProcedureGroup& group);
    [[nodiscard]] std::optional<Skip> CheckMarkers(const EditTarget& target, const Part& part) const;
    [[nodiscard]] std::optional<Skip> CheckPlace(const EditTarget& target, const Part& part) const;
    [[nodiscard]] std::optional<Skip> CheckExpansion(const EditTarget& target, const ProcedureGroup& group);
    [[nodiscard]] std::optional<Skip> CheckLabels(const EditTarget& target, const Part& part) const;
    // The line that the block pushes down; it may lie outside the procedure.
    [[nodiscard]] Line PlaceIn(const Part& part) const;
    [[nodiscard]] std::int32_t BlockSize() const;

    // Whether the module holds the blocks where they belong and is the same around them.
    [[nodiscard]] bool IsAsForeseen(const EditTarget& target, const ProcedureGroup& group,
                                    std::size_t proceduresBefore) const;
    // What to do when it is not: takes the blocks out again. Throws Refusal when that is not possible.
    [[nodiscard]] Skip Withdraw(const EditTarget& target, const ProcedureGroup& group,
                                std::int32_t linesBefore) const;

    // What is worth to know once the blocks are in.
    [[nodiscard]] std::vector<Remark> Remarks(const EditTarget& target) const;
    [[nodiscard]] std::optional<Remark> RemarkOnOtherBlock(const EditTarget& target, const Part& part) const;
    [[nodiscard]] std::optional<Remark> RemarkOnHandler(const EditTarget& target) const;
    void AddToHandlers(Remark remark, ComponentReport& report);

    CustomCodeOptions block_;
    Text number_;               // as the markers write it
    bool hasPlaceholders_;      // it must be looked at anew for each procedure
    std::vector<Text> lines_;   // of the code, expanded for the group at hand
    std::vector<Text> labels_;  // of those lines
    ProcedureText text_;        // as the insertion finds it
    std::vector<Part> parts_;   // of `text_`, from the top of the module to its end
    std::size_t handlers_ = 0;  // of the component, that got a block inside
    std::string handlerMessage_;
};

}  // namespace lintara::cli
