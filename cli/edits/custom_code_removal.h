// Removal of a block of custom code from procedures that takes nothing else with it.
#pragma once

#include "cli/edits/procedure_edit.h"
#include "cli/guards/custom_code_markers.h"
#include "cli/project/procedure_text.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <vector>

namespace lintara::cli {

class CustomCodeRemoval : public ProcedureEdit {
  public:
    explicit CustomCodeRemoval(std::int16_t id);

    // At most one block goes from each procedure; a remark tells of further ones. A group without a marker of
    // the block is left alone.
    [[nodiscard]] std::expected<bool, Skip> Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) override;
    [[nodiscard]] bool ApplyExactly(const EditTarget& target, const ProcedureGroup& group) override;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const override;

  private:
    using Part = ProcedureText::Part;
    using Markers = std::vector<CustomCodeMarker>;

    // A block that goes, by its first and last line; or what remains of its part when none does.
    struct Block {
        Part part;
        Markers markers;  // of the part
        LineRange lines;  // empty when nothing goes
    };

    void Remove(const EditTarget& target, const ProcedureGroup& group) const;
    // Reads the parts and their markers. Whether any is of the block.
    [[nodiscard]] bool FindBlocks(const EditTarget& target, const ProcedureGroup& group);
    [[nodiscard]] std::optional<Skip> Check(const EditTarget& target);
    [[nodiscard]] std::optional<Skip> CheckPrefix(const EditTarget& target, const Block& block) const;
    [[nodiscard]] std::optional<Skip> Delimit(const EditTarget& target, Block& block) const;
    [[nodiscard]] std::optional<Skip> CheckMarkerLines(const EditTarget& target, const Block& block) const;
    [[nodiscard]] std::optional<Skip> CheckNesting(const EditTarget& target, const Block& block) const;
    [[nodiscard]] std::optional<Skip> CheckDirectives(const EditTarget& target, const Block& block) const;
    [[nodiscard]] std::optional<Skip> CheckJumps(const EditTarget& target, const Block& block) const;

    [[nodiscard]] bool IsAsForeseen(const EditTarget& target, const ProcedureGroup& group,
                                    std::size_t proceduresBefore) const;
    void RemarkFurtherBlocks(const EditTarget& target, const Block& block, ComponentReport& report) const;

    std::int16_t id_;
    Text number_;  // as the markers write it
    ProcedureText text_;
    std::vector<Block> blocks_;  // one of each part of `text_`
};

}  // namespace lintara::cli
